#pragma once

#include <string_view>

namespace notation {

/// Where the text of a quoted text without a closing quote ends, and where the token ends.
struct TextEnd {
    std::size_t text = 0;
    std::size_t token = 0;
    bool isClosed = false;
};

/// Judges the rest of a line behind an opening quote, in which no quote closes the text.
///
/// A quote behind a backslash closes it after all when only parentheses and blanks follow: the backslash is then the
/// last byte of a path, or of a character of two bytes. Otherwise the text goes on to the end of the line, without
/// the parentheses there that close nothing within the text: these close what it stands in.
[[nodiscard]] TextEnd endOfUnclosedText(std::string_view rest);

} // namespace notation
