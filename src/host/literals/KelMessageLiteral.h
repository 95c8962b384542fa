#pragma once

#include "host/literals/KelParameterizedTextLiteral.h"

class KelLog;

/// A message: a text with a code and a severity. The short code is the literal's identifier.
///
/// A subclass fills the full code field and offers `log`, `getMessage` and `throwException` with as many
/// parameters as its texts have, on top of the three operations here that take the finished text.
class KEL_API KelMessageLiteral : public KelParameterizedTextLiteral {
public:
    /// `severity` is a word of Severity.h, which the level is taken from.
    KelMessageLiteral(const KelString& code, const KelString& text, const KelString& severity);
    ~KelMessageLiteral() override;

    [[nodiscard]] const KelString& getCode() const { return getIdentifier(); }
    [[nodiscard]] const KelString& getSeverity() const { return severity_; }
    [[nodiscard]] int getSeverityLevel() const { return severityLevel_; }
    [[nodiscard]] const KelString& getFullCode() const { return fullCode_; }

protected:
    /// "[" + full code + "] " + `text`.
    [[nodiscard]] KelString composeMessage(const KelString& text) const;
    /// Hands an event of this message with the given text to the log.
    void record(KelLog& log, const KelString& text) const;
    /// Throws a `KelException` of the composed message.
    [[noreturn]] void raise(const KelString& text) const;

private:
    KelString severity_;
    int severityLevel_;

protected:
    KelString fullCode_;
};
