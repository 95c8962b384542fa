#include "petal/jobs/planUses.h"

#include "petal/Failure.h"
#include "petal/headerCharSet.h"

namespace petal {

FileUses planUses(std::span<const Source> sources, std::span<const ImportPaths> paths, const ImportRequest& request,
                  const JobsRequest& jobs) {
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
