#include "ledger/SourceText.h"

#include "host/encoding/convertText.h"
#include "host/encoding/invalidBytes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace ledger {

SourceText::SourceText(const KelString& encoding)
    : from_(encoding), utf8_("UTF-8"), converts_(from_.getHandle() != nullptr) {}

std::string SourceText::toUtf8(std::string_view bytes, bool* isWhole) {
    if (!converts_ || (isPlain(bytes) && bytes.find('\0') == std::string_view::npos)) {
        return std::string(bytes);
    }
    KelString text(bytes);
    const bool converted = equivalentConverters(&from_, &utf8_) || convertText(from_, utf8_, text);
    if (isWhole != nullptr) {
        *isWhole = converted;
    }
    return std::string(text.view());
}

std::vector<SourceText::Run> SourceText::badRuns(std::string_view bytes) {
    std::vector<Run> runs;
    if (converts_) {
        for (const InvalidBytes& invalid : invalidBytes(from_, bytes)) {
            runs.push_back({invalid.offset, invalid.length});
        }
    }
    return runs;
}

bool isPlain(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080'8080'8080'8080;
    std::uint64_t word = 0; // eight bytes at a time, since all texts come through here
    for (; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
        std::memcpy(&word, bytes.data(), sizeof word);
        if ((word & highBits) != 0) {
            return false;
        }
    }
    return std::ranges::all_of(bytes, [](char byte) { return byte >= 0; });
}

std::string_view takenOfQuoted(std::string_view bytes) {
    return bytes.substr(0, std::min(bytes.find('"'), bytes.find('\0')));
}

std::string_view classNamed(std::string_view text) {
    constexpr std::string_view separator = "::";
    if (text.find("Logical View::") == std::string_view::npos) {
        return text;
    }
    return text.substr(text.rfind(separator) + separator.size());
}

} // namespace ledger
