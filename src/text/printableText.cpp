#include "text/printableText.h"

#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace text {

namespace {

struct Range {
    int first;
    int last;
};

constexpr std::array unprintable{
    Range{0x00, 0x1F},     // C0 controls
    Range{0x7F, 0x9F},     // delete and C1 controls, which start escape sequences as well
    Range{0x061C, 0x061C}, // direction mark
    Range{0x200E, 0x200F}, // direction marks
    Range{0x2028, 0x202E}, // line and paragraph separators, direction embeddings and overrides
    Range{0x2066, 0x2069}, // direction isolates
    Range{0xFEFF, 0xFEFF}, // byte order mark
    Range{0xFFF9, 0xFFFB}, // interlinear annotations
};

std::string hexadecimal(const char* format, unsigned number) {
    std::array<char, 16> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), format, number);
    return {digits.data(), static_cast<std::size_t>(length)};
}

std::string spelledOut(int character) {
    switch (character) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return hexadecimal(character < 0x80 ? "\\x%02x" : "\\u{%x}", static_cast<unsigned>(character));
    }
}

} // namespace

bool isPrintable(int character) {
    return std::none_of(unprintable.begin(), unprintable.end(), [character](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

std::string printableText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = nextCharacter(text, at);
        if (character < 0) {
            for (const char byte : text.substr(start, at - start)) {
                result += hexadecimal("\\x%02x", static_cast<unsigned char>(byte));
            }
        } else if (isPrintable(character)) {
            result += text.substr(start, at - start);
        } else {
            result += spelledOut(character);
        }
    }
    return result;
}

std::string validText(std::string_view bytes) {
    return isValidUtf8(bytes) ? std::string(bytes) : printableText(bytes);
}

} // namespace text
