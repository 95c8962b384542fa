#include "petal/report/Report.h"

#include "petal/commands.h"
#include "petal/output/fileFailure.h"

#include <algorithm>
#include <array>
#include <unordered_map>

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
        add(totals.omitted, file.counts.omitted);
    }
    return totals;
}

namespace {

bool wasTried(const FileReport& file) {
    return file.state == FileState::imported || file.state == FileState::failed;
}

} // namespace

std::vector<FileReport> merged(const std::vector<std::vector<FileReport>>& reports) {
    std::vector<FileReport> all;
    std::unordered_map<std::string, std::size_t> places;
    for (const std::vector<FileReport>& report : reports) {
        for (const FileReport& file : report) {
            const auto [place, isNew] = places.emplace(file.file, all.size());
            if (isNew) {
                all.push_back(file);
            } else if (wasTried(file) || !wasTried(all[place->second])) {
                all[place->second] = file;
            }
        }
    }
    return all;
}

void mergeReports(const MergeRequest& request) {
    std::vector<std::vector<FileReport>> reports;
    std::ranges::transform(request.reports, std::back_inserter(reports), readReport);
    try {
        const auto output = ModelOutput::open(request.output);
        writeReport(merged(reports), *output);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(request.output), error);
    }
}

} // namespace petal
