#pragma once

#include "petal/FileUses.h"
#include "petal/Request.h"
#include "petal/jobs/ImportFiles.h"
#include "petal/jobs/Source.h"

#include <span>

namespace petal {

/// What the import of the sources reads and writes, but for controlled units, which are not known yet; `paths` says for
/// each source where what it gives is to be. Throws a `Failure` with the outcome `wrongUsage` when something would be
/// lost.
[[nodiscard]] FileUses planUses(std::span<const Source> sources, std::span<const ImportPaths> paths,
                                const ImportRequest& request, const JobsRequest& jobs);

/// Throws the same when what is written is a model file so far. Of several models, one might have it for a unit, and
/// when that model is read others have been imported.
void refuseModelFiles(const FileUses& uses);

} // namespace petal
