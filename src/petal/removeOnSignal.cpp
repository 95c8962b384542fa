#include "petal/removeOnSignal.h"

#include <array>
#include <csignal>
#include <unistd.h>

namespace petal {

namespace {

std::atomic<RemovedOnSignal*> first = nullptr;
static_assert(std::atomic<RemovedOnSignal*>::is_always_lock_free, "read by a signal handler");

constexpr std::array endingSignals{SIGINT, SIGQUIT, SIGHUP, SIGTERM};

} // namespace

void RemovedOnSignal::removeAndEnd(int signal) {
    for (const RemovedOnSignal* file = first; file != nullptr; file = file->next_) {
        ::unlink(file->path_);
    }
    ::raise(signal); // takes its default effect now, since the handler is in force only once
}

void RemovedOnSignal::handleEndingSignals() {
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

void RemovedOnSignal::remember(const char* path) {
    path_ = path;
    link_ = &first;
    next_ = first.load();
    if (next_ != nullptr) {
        next_.load()->link_ = &next_;
    }
    first = this;
    handleEndingSignals();
}

void RemovedOnSignal::forget() noexcept {
    if (link_ == nullptr) {
        return;
    }
    RemovedOnSignal* next = next_;
    *link_ = next;
    if (next != nullptr) {
        next->link_ = link_;
    }
    link_ = nullptr;
}

void RemovedOnSignal::forgetAll() noexcept {
    while (first != nullptr) {
        first.load()->forget();
    }
}

} // namespace petal
