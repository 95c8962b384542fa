#include "units/localText.h"

#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/charSetEncoding.h"
#include "host/encoding/localeText.h"

namespace units {

namespace {

constexpr const char* defaultEncoding = "windows-1252";

} // namespace

const char* encodingOf(std::optional<std::int64_t> charSet) {
    const char* encoding = charSetEncoding(charSet);
    return encoding != nullptr ? encoding : defaultEncoding;
}

std::string localText(std::string_view text, std::optional<std::int64_t> charSet) {
    return std::string(utf8ToLocale(KelTextDecoder(encodingOf(charSet)).toUtf8(text).c_str()).view());
}

} // namespace units
