#include "petal/report/FileReport.h"

#include <array>

namespace petal {

namespace {

struct State {
    std::string_view word;
    std::uint64_t ReportTotals::*total;
};

/// In the order of `FileState`.
constexpr std::array states{
    State{"imported", &ReportTotals::imported},
    State{"upToDate", &ReportTotals::upToDate},
    State{"failed", &ReportTotals::failed},
    State{"notStarted", &ReportTotals::notStarted},
};

} // namespace

std::string_view stateWord(FileState state) {
    return states.at(static_cast<std::size_t>(state)).word;
}

ReportTotals totalsOf(const std::vector<FileReport>& files) {
    ReportTotals totals;
    for (const FileReport& file : files) {
        ++(totals.*states.at(static_cast<std::size_t>(file.state)).total);
        totals.objects += file.counts.objects;
        totals.dropped += file.counts.dropped;
        totals.losses += file.counts.losses;
        totals.unitsFound += file.counts.unitsFound;
        totals.unitsMissing += file.counts.unitsMissing;
    }
    return totals;
}

} // namespace petal
