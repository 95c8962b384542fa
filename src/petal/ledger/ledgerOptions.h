#pragma once

#include "petal/Request.h"

namespace CLI {
class App;
}

namespace petal {

/// Adds the options that say what is told of the ledger of an import to a command.
void describeLedgerOptions(CLI::App& command, ImportRequest& request);

} // namespace petal
