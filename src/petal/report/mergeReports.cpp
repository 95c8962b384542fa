#include "petal/commands.h"
#include "petal/fileFailure.h"
#include "petal/report/reports.h"

#include <algorithm>
#include <unordered_map>

namespace petal {

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
