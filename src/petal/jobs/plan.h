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

/// The file in `folder` for what each source gives: the source's own path below the folder, followed by
/// `ending`. A path that goes up, or starts at the root, is mirrored from the root.
///
/// Throws a `Failure` with the outcome `wrongUsage` when two sources would share a file, or when the file of one would
/// be the folder of another's.
[[nodiscard]] std::vector<std::string> planOutputs(std::span<const Source> sources, const std::string& folder,
                                                   std::string_view ending);

/// What the import of the sources reads and writes, but for controlled units, which are not known yet; `paths` says for
/// each source where what it gives is to be. Throws a `Failure` with the outcome `wrongUsage` when something would be
/// lost.
[[nodiscard]] FileUses planUses(std::span<const Source> sources, std::span<const ImportPaths> paths,
                                const ImportRequest& request, const JobsRequest& jobs);

/// Throws the same when what is written is a model file so far. Of several models, one might have it for a unit, and
/// when that model is read others have been imported.
void refuseModelFiles(const FileUses& uses);

/// Whether what the import of `source` gives has been kept, all of it, since `source` last changed; not when nothing
/// is kept.
///
/// Files appear only whole, so what exists is complete unless something else damaged it: every model ends with a
/// line's end, every ledger with its totals, which is checked.
[[nodiscard]] bool isUpToDate(const std::string& source, const ImportPaths& paths);

} // namespace petal
