#include "petal/removeOnSignal.h"

#include <array>
#include <atomic>
#include <csignal>
#include <unistd.h>

namespace petal {

namespace {

std::atomic<const char*> doomedPath{nullptr};
static_assert(std::atomic<const char*>::is_always_lock_free, "read by a signal handler");

constexpr std::array endingSignals{SIGINT, SIGHUP, SIGTERM};

void removeAndEnd(int signal) {
    if (const char* path = doomedPath.load(); path != nullptr) {
        ::unlink(path);
    }
    ::raise(signal); // takes its default effect now, since the handler is in force only once
}

void handleEndingSignals() {
    struct sigaction handling {};
    handling.sa_handler = removeAndEnd;
    handling.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : endingSignals) {
        struct sigaction present {};
        if (::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_DFL) { // not one that is ignored
            ::sigaction(signal, &handling, nullptr);
        }
    }
}

} // namespace

void removeOnSignal(const char* path) {
    doomedPath.store(path);
    if (path != nullptr) {
        handleEndingSignals();
    }
}

} // namespace petal
