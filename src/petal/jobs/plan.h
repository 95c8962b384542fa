#pragma once

#include "petal/Request.h"
#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/Sources.h"
#include "petal/output/FileUses.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// Returns an output path for each source: the source's path below `folder`, followed by `ending`. A path that goes up,
/// or starts at the root, is mirrored from the root.
///
/// Throws a `Failure` with the outcome `wrongUsage` when two sources would share an output, or when the output of one
/// would be the folder of another's.
[[nodiscard]] std::vector<std::string> planOutputs(std::span<const Source> sources, const std::string& folder,
                                                   std::string_view ending);

/// The files that the import of the sources reads and writes, except controlled units, which are not known yet. `paths`
/// has the outputs of each source. Throws a `Failure` with the outcome `wrongUsage` when an output would overwrite an
/// input or another output, or when two outputs would go to standard output.
[[nodiscard]] FileUses planUses(std::span<const Source> sources, std::span<const ImportPaths> paths,
                                const ImportRequest& request, const JobsRequest& jobs);

/// Throws the same when an output would overwrite a model file: it may be a unit of one of several models, which would
/// be known too late, after others have been imported.
void refuseModelFiles(const FileUses& uses);

/// Whether all outputs of `source` exist, are complete and are newer than `source`; false when it has no outputs.
///
/// Outputs are only put in place as a whole, so one that exists is complete unless another program damaged it. That is
/// checked by its end only: a line end for a model, the totals for a ledger.
[[nodiscard]] bool isUpToDate(const std::string& source, const ImportPaths& paths);

} // namespace petal
