#include "text/escape.h"

#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
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

/// Whether the text is printable and JSON has no escapes for it. Nearly all texts are ASCII, too.
bool standsInJson(std::string_view text) {
    unsigned char isUnusual = 0; // no early end, so that the compiler can look at many bytes at a time
    for (const char byte : text) {
        isUnusual |= static_cast<unsigned char>(byte < ' ' || byte == 0x7F || byte == '"' || byte == '\\');
    }
    for (std::size_t at = 0; isUnusual != 0 && at < text.size();) {
        const int character = nextCharacter(text, at);
        if (character < 0 || character == '"' || character == '\\' || !isPrintable(character)) {
            return false;
        }
    }
    return true;
}

/// The printable ASCII characters without a replacement, of which nearly all texts consist.
class PlainCharacters {
public:
    explicit PlainCharacters(std::span<const Replacement> replacements) {
        for (const Replacement& replacement : replacements) {
            const auto character = static_cast<unsigned char>(replacement.character);
            bits_[character / wordSize] &= ~(std::uint64_t{1} << character % wordSize);
        }
    }

    /// The place of the first other character from `at` on.
    [[nodiscard]] std::size_t endFrom(std::string_view text, std::size_t at) const {
        while (at < text.size() && holds(static_cast<unsigned char>(text[at]))) {
            ++at;
        }
        return at;
    }

private:
    static constexpr unsigned wordSize = 64;

    [[nodiscard]] bool holds(unsigned char byte) const {
        return byte < firstBeyondAscii && (bits_[byte / wordSize] >> byte % wordSize & 1U) != 0;
    }

    std::array<std::uint64_t, 2> bits_{~std::uint64_t{0} << firstAfterControls, ~std::uint64_t{0} >> 1U};
};

} // namespace

std::string escaped(std::string_view text, const Escapes& escapes) {
    std::string result;
    result.reserve(text.size());
    const PlainCharacters plain(escapes.replacements);
    std::size_t kept = 0; // what is before it is in the result
    for (std::size_t at = 0; (at = plain.endFrom(text, at)) < text.size();) {
        const std::size_t start = at;
        const int character = nextCharacter(text, at);
        const auto found = character < firstBeyondAscii
                               ? std::ranges::find(escapes.replacements, character, &Replacement::character)
                               : escapes.replacements.end();
        if (character >= 0 && found == escapes.replacements.end() && isPrintable(character)) {
            continue;
        }
        result += text.substr(kept, start - kept);
        kept = at;
        if (character < 0) {
            result += escapedSequence(text.substr(start, at - start), escapes);
        } else if (found != escapes.replacements.end()) {
            result += found->by;
        } else {
            const char* format = character < firstBeyondAscii ? escapes.control : escapes.unprintable;
            result += formatted(format, static_cast<unsigned>(character));
        }
    }
    return result += text.substr(kept);
}

bool isPrintable(int character) {
    constexpr int lastOfAscii = 0x7E;
    constexpr int firstIdeograph = 0x3000;
    constexpr int afterIdeographs = 0xFB00;
    if ((character >= firstAfterControls && character <= lastOfAscii) ||
        (character >= firstIdeograph && character < afterIdeographs)) {
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
