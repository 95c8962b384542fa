#pragma once

#include <string_view>

namespace notation {

/// The end of a quoted text without a closing quote, and the end of its token.
struct TextEnd {
    std::size_t text = 0;
    std::size_t token = 0;
    bool isClosed = false;
};

/// Finds the end of a quoted text from the rest of its line after the opening quote, in which no quote closes it.
///
/// A quote after a backslash closes the text if only parentheses and blanks follow: the backslash is then the last byte
/// of a path, or of a character of two bytes. Otherwise the text extends to the end of the line, except for parentheses
/// there that close nothing within the text: they close the constructs around it.
[[nodiscard]] TextEnd endOfUnclosedText(std::string_view rest);

} // namespace notation
