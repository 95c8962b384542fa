#pragma once

#include "host/literals/HOCM.h"
#include "host/log/KelException.h"

namespace rose {

/// A failure of this bridge that one of the host's messages reports. Its text is made in advance, so that it can be
/// thrown when there is no memory for a text.
class HostFailure {
public:
    explicit HostFailure(const HOCM::MessageInstance_String& message);

    /// Throws the message as a `KelException`, with a new text if there is memory for it.
    [[noreturn]] void raise() const;

private:
    const HOCM::MessageInstance_String* message_;
    KelException prepared_;
};

/// The failures for which the bridge has no message of its own catalog.
struct HostFailures {
    HostFailure unexpected{HOCM::BRIDGE_UNEXPECTED_ERROR};
    HostFailure modelNotEmpty{HOCM::BRIDGE_MODEL_NOT_EMPTY};
    HostFailure importRunning{HOCM::BRIDGE_IMPORT_RUNNING};
};

/// Made by the first call, which may throw `std::bad_alloc`.
const HostFailures& failures();

} // namespace rose
