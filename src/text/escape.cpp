#include "text/escape.h"

#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdio>

namespace text {

namespace {

using Replacement = Escapes::Replacement;

constexpr std::array forTerminal{Replacement{'\n', "\\n"}, Replacement{'\r', "\\r"}, Replacement{'\t', "\\t"}};
constexpr Escapes terminal{
    .replacements = forTerminal, .control = "\\x%02x", .unprintable = "\\u{%x}", .invalidByte = "\\x%02x"};

constexpr std::array forJson{
    Replacement{'"', "\\\""}, Replacement{'\\', "\\\\"}, Replacement{'\b', "\\b"}, Replacement{'\f', "\\f"},
    Replacement{'\n', "\\n"}, Replacement{'\r', "\\r"},  Replacement{'\t', "\\t"},
};
/// No unprintable character needs more than four digits.
constexpr Escapes json{.replacements = forJson, .control = "\\u%04X", .unprintable = "\\u%04X", .invalidByte = nullptr};

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

constexpr int firstAfterControls = 0x20;
constexpr int firstBeyondAscii = 0x80;
constexpr int deleteCharacter = 0x7F;

std::string formatted(const char* format, unsigned number) {
    std::array<char, 16> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), format, number);
    return {digits.data(), static_cast<std::size_t>(length)};
}

std::string escapedSequence(std::string_view invalid, const Escapes& escapes) {
    if (escapes.invalidByte == nullptr) {
        return "\uFFFD";
    }
    std::string result;
    for (const char byte : invalid) {
        result += formatted(escapes.invalidByte, static_cast<unsigned char>(byte));
    }
    return result;
}

/// Whether the text is ASCII without the delete character. Nearly all texts are.
bool isPlainAscii(std::string_view text) {
    unsigned char unusualBits = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        unusualBits |= static_cast<unsigned char>(value + 1) | value; // adding 1 sets the bit for the delete character
    }
    return unusualBits < firstBeyondAscii;
}

/// Whether the text is printable ASCII that JSON has no escapes for. Nearly all texts are.
bool standsInJson(std::string_view text) {
    unsigned char isUnusual = 0; // no early end, so that the compiler can look at many bytes at a time
    for (const char byte : text) {
        isUnusual |= static_cast<unsigned char>(byte < ' ' || byte == 0x7F || byte == '"' || byte == '\\');
    }
    return isUnusual == 0;
}

} // namespace

std::string escaped(std::string_view text, const Escapes& escapes) {
    std::bitset<firstBeyondAscii> isPlain;
    for (int byte = firstAfterControls; byte < deleteCharacter; ++byte) {
        isPlain.set(static_cast<std::size_t>(byte));
    }
    for (const Replacement& replacement : escapes.replacements) {
        isPlain.reset(static_cast<unsigned char>(replacement.character));
    }
    std::string result;
    result.reserve(text.size());
    std::size_t passed = 0; // up to there all is in the result
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = nextCharacter(text, at);
        const bool isAscii = character >= 0 && character < firstBeyondAscii;
        if (isAscii ? isPlain[static_cast<std::size_t>(character)] : character >= 0 && isPrintable(character)) {
            continue;
        }
        result += text.substr(passed, start - passed);
        passed = at;
        if (character < 0) {
            result += escapedSequence(text.substr(start, at - start), escapes);
        } else if (const auto found = std::ranges::find(escapes.replacements, character, &Replacement::character);
                   found != escapes.replacements.end()) {
            result += found->by;
        } else {
            const char* format = isAscii ? escapes.control : escapes.unprintable;
            result += formatted(format, static_cast<unsigned>(character));
        }
    }
    return result += text.substr(passed);
}

bool isPrintable(int character) {
    constexpr int lastOfAscii = 0x7E;
    if (character >= firstAfterControls && character <= lastOfAscii) {
        return true;
    }
    return std::none_of(unprintable.begin(), unprintable.end(), [character](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

std::string printableText(std::string_view text) {
    return escaped(text, terminal);
}

std::string validText(std::string_view bytes) {
    return isValidUtf8(bytes) ? std::string(bytes) : printableText(bytes);
}

std::string quotedJsonText(std::string_view text) {
    std::string quoted;
    appendQuotedJson(quoted, text);
    return quoted;
}

void appendQuotedJson(std::string& to, std::string_view text) {
    to += '"';
    standsInJson(text) ? to.append(text) : to.append(escaped(text, json));
    to += '"';
}

bool isSafeJsonText(std::string_view text) {
    if (isPlainAscii(text)) {
        return true;
    }
    for (std::size_t at = 0; at < text.size();) {
        const int character = nextCharacter(text, at);
        if (character < 0 || (character >= firstAfterControls && !isPrintable(character))) {
            return false;
        }
    }
    return true;
}

} // namespace text
