#pragma once

#include "petal/output/Descriptor.h"

#include <csignal>

namespace petal {

/// Thrown after a signal that asks the program to end, so that destructors clean up.
struct Stopped {
    int signal;
};

/// Holds back the signals that ask the program to end (interrupt, quit, hang-up, termination), so that it can clean up
/// first. Signals that were ignored when it started stay ignored. At most one object at a time.
class StopSignals {
public:
    /// Throws `std::system_error`.
    StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    /// Lets the signals have their usual effect again.
    ~StopSignals();

    /// A descriptor that becomes readable when a signal has arrived.
    [[nodiscard]] int getDescriptor() const { return descriptor_.get(); }
    /// Throws `Stopped` if a signal has arrived.
    void check() const;

    /// Lets the signals through in a forked process.
    static void unblock();

private:
    sigset_t signals_{};
    Descriptor descriptor_;
};

} // namespace petal
