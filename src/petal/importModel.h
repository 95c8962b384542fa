#pragma once

#include "petal/ImportResult.h"
#include "petal/Request.h"

namespace petal {

/// Imports one file in this process and writes the model. Called once in a process: the bridge may end it, and the
/// model stays in memory. Throws a `Failure`.
ImportResult importModel(const ImportRequest& request);

} // namespace petal
