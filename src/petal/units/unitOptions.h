#pragma once

#include "petal/Request.h"
#include "units/UnitLocator.h"

namespace CLI {
class App;
}

namespace petal {

/// Adds the options that say how controlled units are followed to a command.
void describeUnitOptions(CLI::App& command, UnitChoices& choices);

/// What finds the units' files. Throws a `Failure` with the outcome `wrongUsage` for a path map that is none.
[[nodiscard]] units::UnitLocator makeUnitLocator(const UnitChoices& choices);

} // namespace petal
