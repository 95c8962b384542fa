#include "petal/jobs/planUses.h"

#include "petal/Failure.h"
#include "petal/headerCharSet.h"

namespace petal {

namespace {

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
        if (isModelHead(readHead(path))) {
            throw Failure(Outcome::wrongUsage, "writing '" + path + "' would overwrite a model file",
                          "Write to another place.");
        }
    }
}

} // namespace petal
