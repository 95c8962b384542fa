#include "text/jsonText.h"

#include "text/printableText.h"
#include "text/utf8.h"

#include <array>
#include <cstdio>

namespace text {

namespace {

constexpr int firstAfterControls = 0x20;

/// Whether the text is of ASCII, without the delete character; nearly all texts are.
bool isPlainAscii(std::string_view text) {
    unsigned char unusualBits = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        unusualBits |= static_cast<unsigned char>(value + 1) | value; // the one after the last of ASCII has the bit
    }
    return unusualBits < 0x80;
}

/// The controls that JSON has letters for, and their letters.
constexpr std::string_view namedControls = "\b\f\n\r\t";
constexpr std::string_view controlNames = "bfnrt";

std::string escape(int character) {
    const std::size_t named =
        character < firstAfterControls ? namedControls.find(static_cast<char>(character)) : std::string_view::npos;
    if (named != std::string_view::npos) {
        return {'\\', controlNames[named]};
    }
    std::array<char, 8> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "\\u%04X", static_cast<unsigned>(character));
    return {digits.data(), static_cast<std::size_t>(length)};
}

} // namespace

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

std::string quotedJsonText(std::string_view text) {
    std::string quoted("\"");
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = nextCharacter(text, at);
        if (character < 0) {
            quoted += "\uFFFD";
        } else if (character == '"' || character == '\\') {
            quoted += '\\';
            quoted += static_cast<char>(character);
        } else if (isPrintable(character)) {
            quoted += text.substr(start, at - start);
        } else {
            quoted += escape(character); // all of them have four digits
        }
    }
    return quoted + "\"";
}

} // namespace text
