#pragma once

#include "petal/jobs/Source.h"

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

} // namespace petal
