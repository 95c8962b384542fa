#include "export/utf8.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace exporter {

int nextCharacter(std::string_view text, std::size_t& at) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const std::size_t length = text.size();
    UChar32 character = 0;
    U8_NEXT(bytes, at, length, character);
    return character < 0 ? -1 : character;
}

bool isValidUtf8(std::string_view text) {
    const auto* nonAscii = std::find_if(text.begin(), text.end(), [](char byte) { return (byte & 0x80) != 0; });
    for (auto at = static_cast<std::size_t>(nonAscii - text.begin()); at < text.size();) {
        if (nextCharacter(text, at) < 0) {
            return false;
        }
    }
    return true;
}

std::string repairedUtf8(std::string_view text) {
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

} // namespace exporter
