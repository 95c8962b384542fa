#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace layout {

/// How much room texts take, by a table of the advances of a sans-serif face, so that no font is needed. Other faces
/// are near enough. Texts are UTF-8; the cost is proportional to their length.

/// How wide a text of one line is in a font of that size.
[[nodiscard]] double textWidth(std::string_view text, double size, bool isBold);

/// The text in lines: broken at its line ends, and where a line is wider than `width`, at blanks if possible. A width
/// that is not positive breaks at line ends only.
[[nodiscard]] std::vector<std::string> linesOf(std::string_view text, double size, bool isBold, double width);

/// Whether that is the text itself. May be false for a text that happens to fit.
[[nodiscard]] bool isOneLine(std::string_view text, double width);

} // namespace layout
