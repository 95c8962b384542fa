#pragma once

#include "petal/output/Descriptor.h"

#include <csignal>

namespace petal {

/// A signal that asks the program to end, on its way out of the functions that have something to put away.
struct Stopped {
    int signal;
};

/// Holds back the signals that ask a program to end (interrupt, quit, hang-up, termination), but for those it was
/// started to ignore, so that it can put away what it has under way. One at a time.
class StopSignals {
public:
    /// Throws `std::system_error`.
    StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    /// Lets them take their usual effect again.
    ~StopSignals();

    /// Readable once a signal has come.
    [[nodiscard]] int getDescriptor() const { return descriptor_.get(); }
    /// Throws `Stopped` when a signal has come.
    void check() const;

    /// Lets them through in a forked process.
    static void unblock();

private:
    sigset_t signals_{};
    Descriptor descriptor_;
};

} // namespace petal
