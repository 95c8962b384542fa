#include "host/literals/KelParameterizedTextLiteral.h"

#include <charconv>
#include <cstddef>
#include <string_view>

namespace {

// The value for the place that `text` begins with, and through `length` how many bytes the place takes; null
// when there is no place here or it has no value.
const KelString* findValue(std::string_view text, const KelTextParameters& parameters, std::size_t& length) {
    if (text.front() != '{') {
        return nullptr;
    }
    const char* const end = text.data() + text.size();
    std::size_t index = 0;
    const auto [rest, error] = std::from_chars(text.data() + 1, end, index);
    const bool isPlace = error == std::errc() && rest != end && *rest == '}';
    if (!isPlace || index >= parameters.size() || !parameters[index].has_value()) {
        return nullptr;
    }
    length = static_cast<std::size_t>(rest - text.data()) + 1;
    return &*parameters[index];
}

} // namespace

KelParameterizedTextLiteral::~KelParameterizedTextLiteral() = default;

void KelParameterizedTextLiteral::update(const KelString& text, const KelDOMElement* entry) {
    KelTextLiteral::update(text, entry);
}

KelTextParameters KelParameterizedTextLiteral::prapareForParameters() const {
    return {};
}

void KelParameterizedTextLiteral::setParameterValue(KelTextParameters& parameters, int index,
                                                    const KelString& value) const {
    if (index < 0) {
        return;
    }
    const auto position = static_cast<std::size_t>(index);
    if (position >= parameters.size()) {
        parameters.resize(position + 1);
    }
    parameters[position] = value;
}

KelString KelParameterizedTextLiteral::createParametrizedText(const KelTextParameters& parameters) const {
    const std::string_view text = getText().view();
    KelString filled;
    std::size_t copied = 0;
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at)) {
        std::size_t length = 0;
        const KelString* value = findValue(text.substr(at), parameters, length);
        if (value == nullptr) {
            ++at;
            continue;
        }
        filled.append(text.substr(copied, at - copied));
        filled += *value;
        at += length;
        copied = at;
    }
    filled.append(text.substr(copied));
    return filled;
}
