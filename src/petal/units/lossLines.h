#pragma once

#include "units/LostUnits.h"
#include "units/SymbolSearch.h"

#include <string>
#include <vector>

namespace petal {

/// Lines for people, without their ends, that drive no terminal.
using TextLines = std::vector<std::string>;

/// What is lost: a line for each cause, the one with the most units first, and one for the rest when there are more
/// than 20.
[[nodiscard]] TextLines lossLines(const units::LostUnits& lost);

/// Which path maps would find units, as they can be given to a shell.
[[nodiscard]] TextLines suggestionLines(const std::vector<units::SymbolFolder>& folders);
/// Which path maps "--path-map auto" has come to.
[[nodiscard]] TextLines mappingLines(const std::vector<units::SymbolFolder>& folders);

/// The lines as petal's own on standard error.
[[nodiscard]] std::string asNotes(const TextLines& lines);

} // namespace petal
