#include "petal/report/FileReport.h"

#include <algorithm>
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

void add(std::uint64_t& total, std::uint64_t count) {
    total += std::min(count, mostCounted - total);
}

} // namespace

std::string_view stateWord(FileState state) {
    return states.at(static_cast<std::size_t>(state)).word;
}

ReportTotals totalsOf(const std::vector<FileReport>& files) {
    ReportTotals totals;
    for (const FileReport& file : files) {
        ++(totals.*states.at(static_cast<std::size_t>(file.state)).total);
        add(totals.objects, file.counts.objects);
        add(totals.dropped, file.counts.dropped);
        add(totals.losses, file.counts.losses);
        add(totals.unitsFound, file.counts.unitsFound);
        add(totals.unitsMissing, file.counts.unitsMissing);
    }
    return totals;
}

} // namespace petal
