#include "host/encoding/localeText.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/convertText.h"

#include <langinfo.h>
#include <string_view>

namespace {

KelString localEncoding() {
    return nl_langinfo(CODESET);
}

// `text` itself when it cannot be converted without loss, or need not be.
KelString convertedOrSame(const KelString& text, const KelString& fromEncoding, const KelString& toEncoding) {
    KelEncodingConverter from(fromEncoding);
    KelEncodingConverter to(toEncoding);
    if (from.getHandle() == nullptr || to.getHandle() == nullptr || equivalentConverters(&from, &to)) {
        return text;
    }
    KelString converted(text);
    return convertText(from, to, converted) ? converted : text;
}

} // namespace

KelString utf8ToLocale(const char* text) {
    return convertedOrSame(text, "UTF-8", localEncoding());
}

KelString computeNameFromPath(const KelString& path, const KelString& encoding) {
    std::string_view name = path.view();
    name.remove_prefix(name.find_last_of("/\\") + 1); // without a separator, npos + 1 is 0
    const std::size_t dot = name.rfind('.');
    if (dot != std::string_view::npos && dot > 0) {
        name = name.substr(0, dot);
    }
    return convertedOrSame(KelString(name), localEncoding(), encoding);
}
