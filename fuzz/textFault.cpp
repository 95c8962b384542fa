#include "textFault.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace fuzz {

namespace {

bool isControl(UChar32 character) {
    return character < 0x20 || (0x7F <= character && character <= 0x9F);
}

/// Follows the identifiers in a document.
struct Identifiers : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Identifiers> {
    bool Default() { return true; }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        isIdentifier = std::string_view(text, length) == "id";
        return true;
    }
    bool StartArray() {
        inList.push_back(true);
        return true;
    }
    bool EndArray(rapidjson::SizeType /*count*/) {
        inList.pop_back();
        return true;
    }
    bool StartObject() {
        inList.push_back(false);
        return true;
    }
    bool EndObject(rapidjson::SizeType /*count*/) {
        inList.pop_back();
        return true;
    }
    bool Uint(unsigned number) {
        if (inList.back()) {
            highestListed = std::max(highestListed, number);
        } else if (isIdentifier) {
            areInOrder = areInOrder && number == ++count;
        }
        return true;
    }

    std::vector<bool> inList{false}; // for each level
    bool isIdentifier = false;       // the value of the last key
    bool areInOrder = true;
    unsigned count = 0;
    unsigned highestListed = 0;
};

/// What is wrong with the first character that `isWrong` is true of, or that is none.
template <class IsWrong>
std::string characterFault(std::string_view text, IsWrong isWrong) {
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < size;) {
        const std::int32_t start = at;
        UChar32 character = 0;
        U8_NEXT(text.data(), at, size, character);
        if (character < 0) {
            return "no UTF-8 at byte " + std::to_string(start);
        }
        if (isWrong(character)) {
            return "a control character at byte " + std::to_string(start);
        }
    }
    return "";
}

} // namespace

std::string utf8Fault(std::string_view text) {
    return characterFault(text, [](UChar32) { return false; });
}

std::string textFault(std::string_view text) {
    return characterFault(text, [](UChar32 character) { return isControl(character) && character != '\n'; });
}

std::string jsonFault(std::string_view text) {
    if (std::string fault = textFault(text); !fault.empty()) {
        return fault;
    }
    rapidjson::Reader reader;
    rapidjson::MemoryStream stream(text.data(), text.size());
    Identifiers identifiers;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    const rapidjson::ParseResult result = reader.Parse<flags>(stream, identifiers);
    if (result.IsError()) {
        return std::string(rapidjson::GetParseError_En(result.Code())) + " at byte " + std::to_string(result.Offset());
    }
    if (!identifiers.areInOrder) {
        return "identifiers that do not count up";
    }
    return identifiers.highestListed <= identifiers.count ? "" : "a reference to what is not there";
}

} // namespace fuzz
