#pragma once

#include "petal/Request.h"
#include "units/UnitLocator.h"

namespace CLI {
class App;
}

namespace petal {

/// Adds the options about controlled units to a command. `choices` must live until the command is parsed.
void describeUnitOptions(CLI::App& command, UnitChoices& choices);

/// The value of --path-map that makes petal infer the folders.
inline constexpr const char* automaticPathMap = "auto";

/// Whether the choices include it.
[[nodiscard]] bool mapsAutomatically(const UnitChoices& choices);

/// Makes a locator with the folders and path maps of the choices. Throws a `Failure` with the outcome `wrongUsage` for
/// an invalid path map.
[[nodiscard]] units::UnitLocator makeUnitLocator(const UnitChoices& choices);

} // namespace petal
