#include "layout/markup.h"

#include "text/utf8.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace layout {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// Whether a document may have the character at all; the controls that it may have are no use.
bool isAllowed(int character) {
    return (character >= 0x20 && character < 0x7F) || (character >= 0xA0 && character <= 0xD7FF) ||
           (character >= 0xE000 && character <= 0xFFFD) || (character >= 0x10000 && (character & 0xFFFE) != 0xFFFE);
}

std::string_view entityFor(int character) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return {};
    }
}

} // namespace

std::string markup(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = text::nextCharacter(text, at);
        const std::string_view entity = entityFor(character);
        result += !entity.empty() ? entity : isAllowed(character) ? text.substr(start, at - start) : replacement;
    }
    return result;
}

std::string decimal(double number, int decimals) {
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals);
    std::string_view text(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()));
    if (decimals > 0) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        text.remove_suffix(text.ends_with('.') ? 1 : 0);
    }
    return text == "-0" ? "0" : std::string(text);
}

std::string colourText(Colour colour) {
    if (colour == noColour) {
        return "none";
    }
    std::array<char, 8> digits{};
    static_cast<void>(std::snprintf(digits.data(), digits.size(), "#%06x", static_cast<unsigned>(colour & 0xFFFFFF)));
    return digits.data();
}

std::string faceText(std::string_view face) {
    constexpr std::size_t longestFace = 64;
    if (face.empty() || face.size() > longestFace) {
        return {};
    }
    for (std::size_t at = 0; at < face.size();) {
        const int character = text::nextCharacter(face, at);
        const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                              (character >= '0' && character <= '9') || character == ' ' || character == '-' ||
                              (character >= 0xC0 && isAllowed(character));
        if (!isLetter) {
            return {};
        }
    }
    return std::string(face);
}

} // namespace layout
