#include "petal/fileOption.h"

#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/localeText.h"
#include "petal/Failure.h"

#include <clocale>
#include <langinfo.h>

namespace petal {

namespace {

constexpr const char* utf8Locale = "C.UTF-8";

bool leadsTo(const KelString& option, const KelString& path) {
    return utf8ToLocale(option.text()) == path;
}

} // namespace

KelString fileOption(const std::string& path) {
    KelString bytes{std::string_view(path)};
    const std::string utf8 = KelTextDecoder(::nl_langinfo(CODESET)).toUtf8(path);
    KelString converted{std::string_view(utf8)};
    if (leadsTo(converted, bytes)) {
        return converted;
    }
    // The name is not in the local encoding. In a UTF-8 locale any bytes pass as they are.
    if (!leadsTo(bytes, bytes) && (std::setlocale(LC_CTYPE, utf8Locale) == nullptr || !leadsTo(bytes, bytes))) {
        throw Failure(Outcome::importFailed, "the name '" + path + "' cannot be given in the local encoding",
                      "Run petal in a UTF-8 locale, for example with LC_ALL=C.UTF-8.");
    }
    return bytes;
}

} // namespace petal
