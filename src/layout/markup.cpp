#include "layout/markup.h"

#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace layout {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// Whether a document may have the character at all; the controls that it may have are no use.
bool isAllowed(int character) {
    return (character >= 0x20 && character < 0x7F) || (character >= 0xA0 && character <= 0xD7FF) ||
           (character >= 0xE000 && character <= 0xFFFD) || (character >= 0x10000 && (character & 0xFFFE) != 0xFFFE);
}

/// Whether the byte is a character that stands as it is, as nearly all do.
bool stands(char byte) {
    return byte >= 0x20 && byte < 0x7F && byte != '&' && byte != '<' && byte != '>' && byte != '"';
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
        at = static_cast<std::size_t>(
            std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), stands) - text.begin());
        if (at > start) {
            result += text.substr(start, at - start);
            continue;
        }
        const int character = text::nextCharacter(text, at);
        const std::string_view entity = entityFor(character);
        result += !entity.empty() ? entity : isAllowed(character) ? text.substr(start, at - start) : replacement;
    }
    return result;
}

std::string decimal(double number, int decimals) {
    std::array<char, 64> digits{};
    constexpr double mostExact = 1e15;
    if (std::abs(number) < mostExact && number == std::trunc(number)) { // most are whole, which is quicker
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<std::int64_t>(number));
        return std::string(digits.data(), end.ptr);
    }
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
    std::string text = "#000000";
    auto rest = static_cast<unsigned>(colour & 0xFFFFFF);
    for (std::size_t digit = text.size() - 1; rest != 0; --digit, rest >>= 4U) {
        text[digit] = "0123456789abcdef"[rest & 0xFU];
    }
    return text;
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
