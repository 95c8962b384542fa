#pragma once

#include <string>
#include <string_view>

namespace text {

/// Texts as words of ASCII; bytes beyond it stay as they are. The views are parts of the argument.

/// A letter as a small letter, any other byte unchanged.
[[nodiscard]] constexpr char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}
/// Whether all bytes are printable characters of ASCII. Nearly all texts of one line are.
[[nodiscard]] bool isPrintableAscii(std::string_view text);
/// With small letters.
[[nodiscard]] std::string lowerCase(std::string_view text);
/// Without blanks, tabs and line ends before and after it.
[[nodiscard]] std::string_view trimmed(std::string_view text);
/// The part after the last "::" or "." of a path; the whole text without one.
[[nodiscard]] std::string_view lastPart(std::string_view path);

} // namespace text
