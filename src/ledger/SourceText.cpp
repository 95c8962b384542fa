#include "ledger/SourceText.h"

#include "host/encoding/KelEncodingConverter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace ledger {

SourceText::SourceText(const KelString& encoding) : decoder_(encoding) {
    const KelEncodingConverter from(encoding);
    const KelEncodingConverter utf8("UTF-8");
    isKept_ = equivalentConverters(&from, &utf8);
}

bool isPlain(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080'8080'8080'8080;
    std::uint64_t word = 0; // eight bytes at a time: all texts are checked
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
