#pragma once

#include <span>
#include <string_view>

namespace petal {

/// How a command, or one import of many, can end.
enum class Outcome {
    success,
    importFailed,
    inputNotRead,
    bridgeNotLoaded,
    crashed,
    timedOut,
    outOfMemory,
    unexpected,
    wrongUsage,
    bridgeEnded,
    checkTripped,
    unitMissing,
    someFailed,
    outputFailed,
};

struct ExitStatus {
    Outcome outcome;
    int number;
    std::string_view word; // for programs: stands in reports
    const char* meaning;   // half a sentence for people
};

/// One row for each outcome, by number. Help, the manual page and docs/cli.md say the same.
[[nodiscard]] std::span<const ExitStatus> exitStatuses();
[[nodiscard]] const ExitStatus& exitStatus(Outcome outcome);
/// The outcome named by `word`, which must be in the table.
[[nodiscard]] Outcome outcomeOf(std::string_view word);
[[nodiscard]] int exitNumber(Outcome outcome);

} // namespace petal
