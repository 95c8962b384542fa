#include "literals/QEV_RRSE.h"

#include "host/bridge/KelImportBridge.h"
#include "host/literals/messageCode.h"
#include "host/log/KelLog.h"

QEV_RRSE::TextInstance::TextInstance(const KelString& identifier, const KelString& text)
    : KelParameterizedTextLiteral(identifier, text) {}

QEV_RRSE::TextInstance::~TextInstance() = default;

void QEV_RRSE::TextInstance::update(const KelString& text, const KelDOMElement* entry) {
    KelParameterizedTextLiteral::update(text, entry);
}

KelString QEV_RRSE::TextInstance::toString() const {
    return getText();
}

QEV_RRSE::MessageInstance::MessageInstance(const KelString& code, const KelString& text, const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(PREFIX, severity, code);
}

QEV_RRSE::MessageInstance::~MessageInstance() = default;

void QEV_RRSE::MessageInstance::update(const KelString& text, const KelDOMElement* entry) {
    KelMessageLiteral::update(text, entry);
}

KelString QEV_RRSE::MessageInstance::toString() const {
    return getText();
}

KelString QEV_RRSE::MessageInstance::getMessage() const {
    return composeMessage(toString());
}

void QEV_RRSE::MessageInstance::log(KelLog& log) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, toString());
    }
}

void QEV_RRSE::MessageInstance::throwException() const {
    raise(toString());
}

QEV_RRSE::MessageInstance_String::MessageInstance_String(const KelString& code, const KelString& text,
                                                         const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(PREFIX, severity, code);
}

QEV_RRSE::MessageInstance_String::~MessageInstance_String() = default;

void QEV_RRSE::MessageInstance_String::update(const KelString& text, const KelDOMElement* entry) {
    KelMessageLiteral::update(text, entry);
}

KelString QEV_RRSE::MessageInstance_String::toString(const KelString& value) const {
    KelTextParameters parameters = prapareForParameters();
    setParameterValue(parameters, 0, value);
    return createParametrizedText(parameters);
}

KelString QEV_RRSE::MessageInstance_String::getMessage(const KelString& value) const {
    return composeMessage(toString(value));
}

void QEV_RRSE::MessageInstance_String::log(KelLog& log, const KelString& value) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, toString(value));
    }
}

void QEV_RRSE::MessageInstance_String::throwException(const KelString& value) const {
    raise(toString(value));
}

QEV_RRSE::QEV_RRSE() {
    DOCUMENT_ID = KelImportBridge::documentId;
}

const KelString& QEV_RRSE::getDocumentId() const {
    return DOCUMENT_ID;
}

KelTextLiteral* const* QEV_RRSE::listAllLiterals() const {
    return textLiterals;
}

KelTextLiteral* const* QEV_RRSE::getAllLiterals() {
    return textLiterals;
}

const KelTextLiteral* QEV_RRSE::findTextLiteral(const KelString& id) {
    for (KelTextLiteral* const* literal = textLiterals; *literal != nullptr; ++literal) {
        if ((*literal)->getIdentifier() == id) {
            return *literal;
        }
    }
    return nullptr;
}
