#include "petal/fileOption.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/convertText.h"
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

KelString toUtf8(const KelString& path) {
    KelEncodingConverter local(::nl_langinfo(CODESET));
    KelEncodingConverter utf8("UTF-8");
    KelString converted(path);
    if (local.getHandle() != nullptr) {
        convertText(local, utf8, converted);
    }
    return converted;
}

} // namespace

KelString fileOption(const std::string& path) {
    KelString bytes{std::string_view(path)};
    KelString converted = toUtf8(bytes);
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
