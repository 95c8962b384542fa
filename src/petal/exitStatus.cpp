#include "petal/exitStatus.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

constexpr std::array statuses{
    ExitStatus{Outcome::success, 0, "success"},
    ExitStatus{Outcome::importFailed, 1, "the import failed: there is no model and nothing is written"},
    ExitStatus{Outcome::bridgeNotLoaded, 1, "the bridge could not be loaded"},
    ExitStatus{Outcome::outputFailed, 1, "the model, or the log, could not be written"},
    ExitStatus{Outcome::unexpected, 1, "something unexpected, such as too little memory"},
    ExitStatus{Outcome::wrongUsage, 2, "wrong usage; or the bridge could not go on reading the file"},
};

} // namespace

std::span<const ExitStatus> exitStatuses() {
    return statuses;
}

int exitNumber(Outcome outcome) {
    return std::ranges::find(statuses, outcome, &ExitStatus::outcome)->number;
}

} // namespace petal
