#pragma once

#include "host/literals/HOCM.h"
#include "host/log/KelException.h"

namespace rose {

/// A failure of this bridge that one of the host's messages tells of. It is worded when it is made, so that it can be
/// thrown when there is no memory to word it.
class HostFailure {
public:
    explicit HostFailure(const HOCM::MessageInstance_String& message);

    /// Throws the message as a `KelException`, worded anew as long as there is memory to word it.
    [[noreturn]] void raise() const;

private:
    const HOCM::MessageInstance_String* message_;
    KelException prepared_;
};

/// What the bridge has no message of its own for.
struct HostFailures {
    HostFailure unexpected{HOCM::BRIDGE_UNEXPECTED_ERROR};
    HostFailure modelNotEmpty{HOCM::BRIDGE_MODEL_NOT_EMPTY};
    HostFailure importRunning{HOCM::BRIDGE_IMPORT_RUNNING};
};

/// Made by the first call, which may throw `std::bad_alloc`.
const HostFailures& failures();

} // namespace rose
