#include "text/utf8.h"

#include <unicode/utf8.h>

#include <cstdint>

namespace text {

int nextBeyondAscii(std::string_view text, std::size_t& at) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const std::size_t length = text.size();
    UChar32 character = 0;
    U8_NEXT(bytes, at, length, character);
    return character < 0 ? -1 : character;
}

bool isAscii(std::string_view text) {
    unsigned char allBits = 0;
    for (const char byte : text) {
        allBits |= static_cast<unsigned char>(byte);
    }
    return allBits < 0x80;
}

bool isValidUtf8(std::string_view text) {
    if (isAscii(text)) {
        return true;
    }
    for (std::size_t at = 0; at < text.size();) {
        if (nextCharacter(text, at) < 0) {
            return false;
        }
    }
    return true;
}

std::string repairedUtf8(std::string_view text) {
    if (isValidUtf8(text)) {
        return std::string(text);
    }
    std::string repaired;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        if (nextCharacter(text, at) < 0) {
            repaired += "\uFFFD";
        } else {
            repaired += text.substr(start, at - start);
        }
    }
    return repaired;
}

} // namespace text
