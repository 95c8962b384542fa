#pragma once

#include <string>

class KelObject;

namespace exporter {

class OutlineLines;

/// The line of the outline for an element: printable text without a line end.
[[nodiscard]] std::string lineOf(const KelObject& element);

/// Writes the lines between that of the element and those of the elements in it, notes excepted: origins of the model,
/// values of types, what a diagram shows, notes on arguments, role name maps. Throws what the output throws.
void writeLinesBelow(const KelObject& element, OutlineLines& lines);

} // namespace exporter
