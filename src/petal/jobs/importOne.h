#pragma once

#include "petal/import/importModel.h"
#include "petal/jobs/ImportEnd.h"
#include "petal/jobs/ImportProcess.h"

namespace petal {

/// Imports one file in a process of its own, which shares this process's streams. Throws `Stopped` and a `Failure` when
/// nothing could be started.
[[nodiscard]] ImportEnd importApart(const ImportRequest& request, const ImportContext& context, const Limits& limits);

/// Imports one file in this process.
[[nodiscard]] ImportEnd importHere(const ImportRequest& request, const ImportContext& context);

} // namespace petal
