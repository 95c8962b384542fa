#pragma once

#include "units/LostUnits.h"
#include "units/SymbolSearch.h"

#include <cstdint>
#include <string>
#include <vector>

namespace petal {

/// Lines for people, without line ends and control characters.
using TextLines = std::vector<std::string>;

/// "1 unit", "2 units".
[[nodiscard]] std::string counted(std::uint64_t count, const std::string& noun);

/// The lost units: a line for each cause, the one with the most units first, and a line for the others if there are
/// more than 20 causes.
[[nodiscard]] TextLines lossLines(const units::LostUnits& lost);

/// The path maps that would find units, as options for a shell.
[[nodiscard]] TextLines suggestionLines(const std::vector<units::SymbolFolder>& folders);
/// The path maps that "--path-map auto" inferred, as options for a shell.
[[nodiscard]] TextLines mappingLines(const std::vector<units::SymbolFolder>& folders);

/// The lines as messages of petal on standard error, each after "petal: ".
[[nodiscard]] std::string asNotes(const TextLines& lines);

} // namespace petal
