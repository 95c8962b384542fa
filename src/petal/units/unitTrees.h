#pragma once

#include "units/LostUnits.h"
#include "units/UnitLocator.h"
#include "units/UnitTree.h"

#include <span>
#include <string>

namespace petal {

/// The model at `path` with its units. Throws a `Failure` with the outcome `inputNotRead` when it cannot be read or is
/// no model.
[[nodiscard]] units::UnitTree readModelTree(const std::string& path, units::UnitLocator& locator);

/// The model at `path` as if it had no units. Throws likewise.
[[nodiscard]] units::UnitTree readModelAlone(const std::string& path);

/// What is lost of models; those that cannot be read are left out.
[[nodiscard]] units::LostUnits lossesOf(std::span<const std::string> files, units::UnitLocator& locator);

} // namespace petal
