#pragma once

#include <string>
#include <string_view>

/// A petal text and what the model looks like after its import.
struct OutlineRow {
    const char* what;
    std::string_view text;
    std::string_view outline;
};

/// The packages of the model that a text makes, as the outline shows them, behind a newline and without a last one;
/// types are left out. The text follows the header of a file. What is wrong with the model stands there instead.
[[nodiscard]] std::string outlineOf(std::string_view text);

/// The same for a text that stands in the category "Logical View", without the line of that package.
[[nodiscard]] std::string outlineInLogicalView(std::string_view text);
