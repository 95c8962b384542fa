#pragma once

#include "host/literals/KelParameterizedTextLiteral.h"

class KelLog;

/// A message: a parameterised text with a code and a severity. The short code is the literal's identifier.
///
/// A subclass sets the full code and offers `log`, `getMessage` and `throwException` with the parameters of its texts,
/// based on the three operations here that take the finished text. These may throw `std::bad_alloc`. Any number of
/// threads may use a message.
class KEL_API KelMessageLiteral : public KelParameterizedTextLiteral {
public:
    /// `severity` is a word of Severity.h, from which the level follows.
    KelMessageLiteral(const KelString& code, const KelString& text, const KelString& severity);
    ~KelMessageLiteral() override;

    [[nodiscard]] const KelString& getCode() const { return getIdentifier(); }
    [[nodiscard]] const KelString& getSeverity() const { return severity_; }
    [[nodiscard]] int getSeverityLevel() const { return severityLevel_; }
    /// The code with the prefix of its collection, such as "QEV_RRSE_F0002" (`fullMessageCode`).
    [[nodiscard]] const KelString& getFullCode() const { return fullCode_; }

protected:
    /// "[" + full code + "] " + `text`.
    [[nodiscard]] KelString composeMessage(const KelString& text) const;
    /// Passes an event with this message's code and level and the given text to the log, whether it accepts it or not.
    void record(KelLog& log, const KelString& text) const;
    /// Throws the composed message as a `KelException`.
    [[noreturn]] void raise(const KelString& text) const;

private:
    KelString severity_;
    int severityLevel_;

protected:
    KelString fullCode_;
};
