#include "petal/LogText.h"

#include "host/encoding/convertText.h"

namespace petal {

LogText::LogText(const KelString& encoding)
    : from_(encoding), utf8_("UTF-8"), converts_(from_.getHandle() != nullptr && from_.isPlainText("Creating 1...")) {}

KelString LogText::toUtf8(const KelString& text) {
    KelString converted(text);
    if (converts_ && !from_.isPlainText(text)) {
        convertText(from_, utf8_, converted);
    }
    return converted;
}

} // namespace petal
