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

/// By byte: whether it is a character that stands as it is, as nearly all do.
constexpr auto standing = [] {
    std::array<bool, 256> stands{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte) {
        stands[byte] = byte != '&' && byte != '<' && byte != '>' && byte != '"';
    }
    return stands;
}();

bool stands(char byte) {
    return standing[static_cast<unsigned char>(byte)];
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

bool standsAsMarkup(std::string_view text) {
    return std::ranges::all_of(text, stands);
}

namespace {

/// The digits of a number that is not whole, or null where rounding it needs more care: close to the middle between
/// two results, and beyond what the numbers here are.
char* writeRounded(char* to, double number, int decimals) {
    constexpr std::array powers{1.0, 10.0, 100.0, 1000.0, 10000.0};
    constexpr double most = 1e10;
    constexpr double closest = 1e-4; // multiplying is more exact than this
    const auto places = static_cast<std::size_t>(decimals);
    if (places >= powers.size() || !(std::abs(number) * powers[places] < most)) {
        return nullptr;
    }
    const double scaled = std::abs(number) * powers[places];
    auto rounded = static_cast<std::int64_t>(scaled);
    const double rest = scaled - static_cast<double>(rounded) - 0.5;
    if (std::abs(rest) < closest) {
        return nullptr;
    }
    rounded += rest > 0 ? 1 : 0;
    if (rounded == 0) {
        *to = '0';
        return to + 1;
    }
    int left = decimals;
    for (; left > 0 && rounded % 10 == 0; --left) {
        rounded /= 10;
    }
    const auto power = static_cast<std::int64_t>(powers[static_cast<std::size_t>(left)]);
    *to = '-';
    to += number < 0 ? 1 : 0;
    to = std::to_chars(to, to + mostDigits / 2, rounded / power).ptr;
    std::int64_t digits = rounded % power;
    if (left > 0) {
        *to = '.';
        for (int place = left; place > 0; --place, digits /= 10) {
            to[place] = static_cast<char>('0' + digits % 10);
        }
        to += left + 1;
    }
    return to;
}

} // namespace

char* writeDecimal(char* to, double number, int decimals) {
    constexpr double mostExact = 1e15;
    if (std::abs(number) < mostExact && number == std::trunc(number)) { // most are whole
        return std::to_chars(to, to + mostDigits, static_cast<std::int64_t>(number)).ptr;
    }
    if (char* const end = writeRounded(to, number, decimals)) {
        return end;
    }
    const auto end = std::to_chars(to, to + mostDigits, number, std::chars_format::fixed, decimals);
    std::string_view text(to, static_cast<std::size_t>(end.ptr - to));
    if (decimals > 0) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        text.remove_suffix(text.ends_with('.') ? 1 : 0);
    }
    if (text == "-0") {
        *to = '0';
        return to + 1;
    }
    return to + text.size();
}

std::string decimal(double number, int decimals) {
    std::array<char, mostDigits> digits{};
    return {digits.data(), writeDecimal(digits.data(), number, decimals)};
}

char* writeColour(char* to, Colour colour) {
    if (colour == noColour) {
        return std::ranges::copy(std::string_view("none"), to).out;
    }
    const auto bits = static_cast<unsigned>(colour & 0xFFFFFF);
    *to++ = '#';
    for (int shift = 20; shift >= 0; shift -= 4) {
        *to++ = "0123456789abcdef"[bits >> static_cast<unsigned>(shift) & 0xFU];
    }
    return to;
}

std::string colourText(Colour colour) {
    std::array<char, mostOfColour> digits{};
    return {digits.data(), writeColour(digits.data(), colour)};
}

bool isFace(std::string_view face) {
    constexpr std::size_t longestFace = 64;
    if (face.empty() || face.size() > longestFace) {
        return false;
    }
    for (std::size_t at = 0; at < face.size();) {
        const int character = text::nextCharacter(face, at);
        const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                              (character >= '0' && character <= '9') || character == ' ' || character == '-' ||
                              (character >= 0xC0 && isAllowed(character));
        if (!isLetter) {
            return false;
        }
    }
    return true;
}

} // namespace layout
