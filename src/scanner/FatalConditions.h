#pragma once

#include <cstdint>

namespace rose {

/// The conditions that end the whole process. None of them is reported to the host.
enum class FatalCondition : std::uint8_t {
    readFailed,
    bufferCannotGrow,
    bufferCannotBeAllocated,
    noRoomToPushBack,
    noActionFound,
    endOfBufferMissed,
};

/// Writes the condition's message and a newline to the standard error stream and exits with status 2.
[[noreturn]] void stopProcess(FatalCondition condition);

} // namespace rose
