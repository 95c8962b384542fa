#pragma once

#include "petal/jobs/ImportFiles.h"

#include <string>

namespace petal {

/// Whether what the import of `source` gives has been kept, all of it, since `source` last changed; not when nothing
/// is kept.
///
/// Files appear only whole, so what exists is complete unless something else damaged it: every model ends with a
/// line's end, every ledger with its totals, which is checked.
[[nodiscard]] bool isUpToDate(const std::string& source, const ImportPaths& paths);

} // namespace petal
