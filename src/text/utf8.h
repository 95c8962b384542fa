#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// An invalid sequence is the longest run of bytes that begins a valid one, or a single byte if none does. All
/// functions take time proportional to the text.

/// Reads the character at `at`, which must be within the text, and moves `at` to the next one. Returns its number, or
/// -1 for an invalid sequence.
[[nodiscard]] int nextBeyondAscii(std::string_view text, std::size_t& at);
[[nodiscard]] inline int nextCharacter(std::string_view text, std::size_t& at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    return byte < 0x80 ? (++at, byte) : nextBeyondAscii(text, at);
}

/// Whether all bytes are ASCII. Nearly all texts are.
[[nodiscard]] bool isAscii(std::string_view text);

[[nodiscard]] bool isValidUtf8(std::string_view text);

/// The text with U+FFFD for each invalid sequence.
[[nodiscard]] std::string repairedUtf8(std::string_view text);

} // namespace text
