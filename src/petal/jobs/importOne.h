#pragma once

#include "petal/import/importModel.h"
#include "petal/jobs/ImportEnd.h"
#include "petal/jobs/ImportProcess.h"

namespace petal {

/// Imports one file in a child process, which uses this process's streams, and puts the outputs in place. Throws
/// `Stopped`, a `Failure` when an output cannot be written or the plug-in cannot be loaded, and `std::system_error`
/// when no process can be started. A failed import is returned.
[[nodiscard]] ImportEnd importApart(const ImportRequest& request, const ImportContext& context, const Limits& limits);

/// Imports one file in this process. A failed import is returned, not thrown.
[[nodiscard]] ImportEnd importHere(const ImportRequest& request, const ImportContext& context);

} // namespace petal
