#pragma once

#include "units/LostUnits.h"
#include "units/UnitLocator.h"
#include "units/UnitTree.h"

#include <span>
#include <string>

namespace petal {

/// Reads the model at `path` with its units. Throws a `Failure` with the outcome `inputNotRead` when it cannot be read
/// or is not a model.
[[nodiscard]] units::UnitTree readModelTree(const std::string& path, units::UnitLocator& locator);

/// Reads the model at `path` without its units. Throws likewise.
[[nodiscard]] units::UnitTree readModelAlone(const std::string& path);

/// The lost units of the models that can be read. Ignores the others.
[[nodiscard]] units::LostUnits lossesOf(std::span<const std::string> files, units::UnitLocator& locator);

} // namespace petal
