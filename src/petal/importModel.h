#pragma once

#include "petal/FileUses.h"
#include "petal/ImportResult.h"
#include "petal/Request.h"

namespace petal {

/// Imports one file in this process and writes the model in the format that is chosen in the request. Called once in a
/// process: the bridge may end it, and the model stays in memory. `uses` are those of the whole command; the files of
/// controlled units must not be among what it writes. Throws a `Failure`.
ImportResult importModel(const ImportRequest& request, const FileUses& uses);

} // namespace petal
