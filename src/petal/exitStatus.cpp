#include "petal/exitStatus.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

constexpr std::array statuses{
    ExitStatus{Outcome::success, 0, "success", "done"},
    ExitStatus{Outcome::importFailed, 1, "importFailed", "the import failed: there is no model and nothing is written"},
    ExitStatus{Outcome::inputNotRead, 1, "inputNotRead", "a file could not be read, or is not of the kind it must be"},
    ExitStatus{Outcome::bridgeNotLoaded, 1, "bridgeNotLoaded", "the bridge could not be loaded"},
    ExitStatus{Outcome::crashed, 1, "crashed", "a signal ended the process of the import"},
    ExitStatus{Outcome::timedOut, 1, "timedOut", "the import took longer than --timeout allows"},
    ExitStatus{Outcome::outOfMemory, 1, "outOfMemory",
               "there was too little memory, or --max-memory allows too little"},
    ExitStatus{Outcome::unexpected, 1, "unexpected", "any other failure"},
    ExitStatus{Outcome::wrongUsage, 2, "wrongUsage", "wrong usage"},
    ExitStatus{Outcome::bridgeEnded, 2, "bridgeEnded", "the bridge could not go on reading and ended the process"},
    ExitStatus{Outcome::checkTripped, 3, "checkTripped", "done, but a --fail-on condition was met"},
    ExitStatus{Outcome::unitMissing, 4, "unitMissing", "a unit is missing that '--units require' asks for"},
    ExitStatus{Outcome::someFailed, 5, "someFailed", "of several files some failed, or all; the others are done"},
    ExitStatus{Outcome::outputFailed, 6, "outputFailed",
               "the model, the log, the ledger, the report or the catalogue could not be written"},
};

} // namespace

std::span<const ExitStatus> exitStatuses() {
    return statuses;
}

const ExitStatus& exitStatus(Outcome outcome) {
    return *std::ranges::find(statuses, outcome, &ExitStatus::outcome);
}

Outcome outcomeOf(std::string_view word) {
    return std::ranges::find(statuses, word, &ExitStatus::word)->outcome;
}

int exitNumber(Outcome outcome) {
    return exitStatus(outcome).number;
}

} // namespace petal
