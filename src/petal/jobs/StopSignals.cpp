#include "petal/jobs/StopSignals.h"

#include "petal/output/Descriptor.h"

#include <array>
#include <sys/signalfd.h>

namespace petal {

namespace {

constexpr std::array stopSignals{SIGINT, SIGQUIT, SIGHUP, SIGTERM};

bool isIgnored(int signal) {
    struct sigaction present {};
    return ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

} // namespace

StopSignals::StopSignals() {
    sigemptyset(&signals_);
    for (const int signal : stopSignals) {
        if (!isIgnored(signal)) {
            sigaddset(&signals_, signal);
        }
    }
    descriptor_ = Descriptor(::signalfd(-1, &signals_, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!descriptor_.isOpen() || ::sigprocmask(SIG_BLOCK, &signals_, nullptr) != 0) {
        throwErrno();
    }
}

StopSignals::~StopSignals() {
    ::sigprocmask(SIG_UNBLOCK, &signals_, nullptr);
}

void StopSignals::check() const {
    signalfd_siginfo info{};
    if (::read(descriptor_.get(), &info, sizeof info) == sizeof info) {
        throw Stopped{static_cast<int>(info.ssi_signo)};
    }
}

void StopSignals::unblock() {
    sigset_t all{};
    sigemptyset(&all);
    for (const int signal : stopSignals) {
        sigaddset(&all, signal);
    }
    ::sigprocmask(SIG_UNBLOCK, &all, nullptr);
}

} // namespace petal
