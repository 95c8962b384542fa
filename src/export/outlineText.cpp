#include "export/outlineText.h"

#include "host/model/KelType.h"
#include "text/escape.h"

namespace exporter {

std::string plain(const KelString& text) {
    return text::printableText(text.view());
}

std::string after(std::string_view prefix, const KelString& text) {
    return text.isEmpty() ? std::string() : std::string(prefix) + plain(text);
}

std::string nameOf(const KelObject* object) {
    return object != nullptr ? plain(object->getName()) : "?";
}

std::string typed(const KelType* type) {
    return type != nullptr ? ": " + plain(type->getName()) : std::string();
}

std::string remarks(std::initializer_list<Remark> all) {
    std::string text;
    for (const Remark& remark : all) {
        if (remark.applies) {
            text += (text.empty() ? " (" : ", ") + remark.text;
        }
    }
    return text.empty() ? text : text + ")";
}

} // namespace exporter
