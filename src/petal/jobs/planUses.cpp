#include "petal/jobs/planUses.h"

#include "notation/Header.h"
#include "petal/Failure.h"
#include "units/OpenFile.h"

#include <array>
#include <system_error>

namespace petal {

namespace {

bool isModelFile(const std::string& path) {
    std::array<char, 20> head{}; // that is where the bridge looks
    try {
        const std::size_t length = units::OpenFile(path).read(head.data(), head.size());
        return std::string_view(head.data(), length).find(notation::headerStart) != std::string_view::npos;
    } catch (const std::system_error&) {
        return false;
    }
}

/// Only one of them can go there.
void refuseSharedStandardOutput(const ImportRequest& request, const JobsRequest& jobs, bool isSingle) {
    const bool hasModel = isSingle && request.format != "none" && request.output.value_or("-") == "-";
    const bool hasLedger = request.ledger == "-";
    const bool hasReport = jobs.report == "-";
    if (hasModel + hasLedger + hasReport > 1) {
        throw Failure(Outcome::wrongUsage,
                      std::string(hasModel ? "the model" : "the ledger") + " and " +
                          (hasReport ? "the report" : "the ledger") + " would both go to standard output",
                      "Give one of them a file.");
    }
}

} // namespace

FileUses planUses(std::span<const Source> sources, std::span<const ImportPaths> paths, const ImportRequest& request,
                  const JobsRequest& jobs) {
    refuseSharedStandardOutput(request, jobs, sources.size() == 1);
    FileUses uses;
    for (const Source& source : sources) {
        uses.reads(source.path);
    }
    if (jobs.filesFrom) {
        uses.reads(*jobs.filesFrom);
    }
    for (const ImportPaths& planned : paths) {
        uses.writes(planned.model);
        uses.writes(planned.ledger);
    }
    uses.writes(request.log.value_or(""));
    uses.writes(jobs.report.value_or(""));
    return uses;
}

void refuseModelFiles(const FileUses& uses) {
    for (const auto& [file, path] : uses.getWritten()) {
        if (isModelFile(path)) {
            throw Failure(Outcome::wrongUsage, "writing '" + path + "' would overwrite a model file",
                          "Write to another place.");
        }
    }
}

} // namespace petal
