#include "petal/removeOnSignal.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <unistd.h>

namespace petal {

namespace {

constexpr std::size_t mostDoomed = 8;
std::array<std::atomic<const char*>, mostDoomed> doomedPaths{}; // null where there is room
static_assert(std::atomic<const char*>::is_always_lock_free, "read by a signal handler");

constexpr std::array endingSignals{SIGINT, SIGQUIT, SIGHUP, SIGTERM};

void replaceFirst(const char* old, const char* path) {
    if (const auto found = std::ranges::find(doomedPaths, old, [](const auto& doomed) { return doomed.load(); });
        found != doomedPaths.end()) {
        found->store(path);
    }
}

void removeAndEnd(int signal) {
    for (const auto& doomed : doomedPaths) {
        if (const char* path = doomed.load(); path != nullptr) {
            ::unlink(path);
        }
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
    replaceFirst(nullptr, path);
    handleEndingSignals();
}

void keepOnSignal(const char* path) {
    replaceFirst(path, nullptr);
}

void keepAllOnSignal() {
    for (auto& doomed : doomedPaths) {
        doomed.store(nullptr);
    }
}

} // namespace petal
