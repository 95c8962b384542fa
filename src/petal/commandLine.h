#pragma once

#include "petal/Request.h"

namespace petal {

/// Reads the arguments behind the program's name. Throws a `Failure` with the outcome `wrongUsage`.
[[nodiscard]] Request parseCommandLine(int argc, const char* const* argv);

} // namespace petal
