#pragma once

#include "petal/Request.h"
#include "units/UnitLocator.h"

namespace CLI {
class App;
}

namespace petal {

/// Adds the options that say how controlled units are followed to a command.
void describeUnitOptions(CLI::App& command, UnitChoices& choices);

/// The path map that stands for those that petal finds out by itself.
inline constexpr const char* automaticPathMap = "auto";

/// Whether that one is among the choices.
[[nodiscard]] bool mapsAutomatically(const UnitChoices& choices);

/// What finds the units' files. Throws a `Failure` with the outcome `wrongUsage` for a path map that is none.
[[nodiscard]] units::UnitLocator makeUnitLocator(const UnitChoices& choices);

} // namespace petal
