#include "units/localText.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/charSetEncoding.h"
#include "host/encoding/convertText.h"
#include "host/encoding/localeText.h"

#include <utility>

namespace units {

namespace {

constexpr const char* defaultEncoding = "windows-1252";

} // namespace

const char* encodingOf(std::optional<std::int64_t> charSet) {
    const char* encoding =
        charSet && std::in_range<int>(*charSet) ? charSetEncoding(static_cast<int>(*charSet)) : nullptr;
    return encoding != nullptr ? encoding : defaultEncoding;
}

std::string utf8Text(std::string_view text, std::string_view encoding) {
    KelEncodingConverter from{KelString(encoding)};
    KelEncodingConverter utf8("UTF-8");
    KelString converted(text);
    if (from.getHandle() != nullptr) {
        convertText(from, utf8, converted);
    }
    return std::string(converted.view());
}

std::string localText(std::string_view text, std::optional<std::int64_t> charSet) {
    return std::string(utf8ToLocale(utf8Text(text, encodingOf(charSet)).c_str()).view());
}

} // namespace units
