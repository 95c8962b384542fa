#pragma once

#include "petal/Request.h"

namespace CLI {
class App;
}

namespace petal {

/// Adds the options of `petal diff` to its command. `request` must live until the command is parsed.
void describeDiff(CLI::App& diff, DiffRequest& request);

} // namespace petal
