#pragma once

#include <string>
#include <string_view>

namespace text {

/// Whether a terminal only shows the character, and as one that follows the one before it.
[[nodiscard]] bool isPrintable(int character);

/// `text` so that a terminal only shows it: every character that could move the cursor, start an escape sequence
/// or turn the direction of writing is spelled out ("\n", "\x1b", "\u{202e}"), and so is every byte that is not
/// part of valid UTF-8 ("\xe9"). The result is valid UTF-8 of one line.
[[nodiscard]] std::string printableText(std::string_view text);

/// Bytes as a text for JSON: themselves when they are UTF-8; otherwise as `printableText`, so that the names of files
/// stay apart.
[[nodiscard]] std::string validText(std::string_view bytes);

} // namespace text
