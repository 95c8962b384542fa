// Literals, from a plain text to a message with parameters, and the registry of their collections.
#include "host/literals/KelLiteralRegistry.h"
#include "host/literals/KelMessageLiteral.h"
#include "host/literals/KelParameterizedTextLiteral.h"
#include "host/literals/KelTextLiteral.h"
#include "host/literals/KelTextLiteralsCollection.h"
#include "host/literals/messageCode.h"
#include "host/log/KelException.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"

#include <charconv>
#include <cstddef>
#include <string_view>

KelTextLiteral::~KelTextLiteral() = default;

void KelTextLiteral::update(const KelString& text, const KelDOMElement* entry) {
    if (entry != nullptr) {
        text_ = text;
    }
}

namespace {

// The value for the placeholder at the start of `text`, and in `length` the placeholder's bytes; null when there is no
// placeholder or it has no value.
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

KelString fullMessageCode(const KelString& prefix, const KelString& severity, const KelString& code) {
    constexpr std::string_view blankCode = "0000";
    const std::string_view digits = code.view();
    KelString full(prefix);
    full.append("_");
    full.append(severity.view().substr(0, 1));
    if (digits.size() < blankCode.size()) {
        full.append(blankCode.substr(digits.size()));
    }
    full.append(digits);
    return full;
}

KelMessageLiteral::KelMessageLiteral(const KelString& code, const KelString& text, const KelString& severity)
    : KelParameterizedTextLiteral(code, text), severity_(severity), severityLevel_(::severityLevel(severity)) {}

KelMessageLiteral::~KelMessageLiteral() = default;

KelString KelMessageLiteral::composeMessage(const KelString& text) const {
    KelString message("[");
    message += fullCode_;
    message.append("] ");
    message += text;
    return message;
}

void KelMessageLiteral::record(KelLog& log, const KelString& text) const {
    log.record(KelLogEvent(text, fullCode_, severityLevel_, emptyString));
}

void KelMessageLiteral::raise(const KelString& text) const {
    throw KelException(composeMessage(text));
}

// This call constructs the registry before any collection, so that it outlives them all.
KelTextLiteralsCollection::KelTextLiteralsCollection() {
    KelLiteralRegistry::instance();
}

KelTextLiteralsCollection::~KelTextLiteralsCollection() {
    KelLiteralRegistry::instance().unregisterCollection(*this);
}

bool KelTextLiteralsCollection::init() {
    return KelLiteralRegistry::instance().registerCollection(*this);
}

KelLiteralRegistry& KelLiteralRegistry::instance() {
    static KelLiteralRegistry registry;
    return registry;
}

bool KelLiteralRegistry::registerCollection(const KelTextLiteralsCollection& collection) {
    const auto [entry, added] = collections_.try_emplace(std::string(collection.getDocumentId().view()), &collection);
    return added || entry->second == &collection;
}

void KelLiteralRegistry::unregisterCollection(const KelTextLiteralsCollection& collection) noexcept {
    std::erase_if(collections_, [&](const auto& entry) { return entry.second == &collection; });
}

const KelTextLiteralsCollection* KelLiteralRegistry::findCollection(const KelString& documentId) const {
    const auto entry = collections_.find(documentId.view());
    return entry != collections_.end() ? entry->second : nullptr;
}
