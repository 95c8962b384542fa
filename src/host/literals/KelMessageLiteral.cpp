#include "host/literals/KelMessageLiteral.h"

#include "host/log/KelException.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"

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
