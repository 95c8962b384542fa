#pragma once

#include <span>

namespace petal {

/// How a command can end.
enum class Outcome { success, importFailed, bridgeNotLoaded, outputFailed, unexpected, wrongUsage };

struct ExitStatus {
    Outcome outcome;
    int number;
    const char* meaning; // half a sentence for people
};

/// One row for each outcome, by number.
[[nodiscard]] std::span<const ExitStatus> exitStatuses();
[[nodiscard]] int exitNumber(Outcome outcome);

} // namespace petal
