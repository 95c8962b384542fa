#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// One entry of a log. Texts are in the encoding of whoever reports: file contents may be in that of the file.
class KEL_API KelLogEvent {
public:
    /// `severityLevel` is a level of Severity.h; `furtherText` may add to the message or be empty.
    KelLogEvent(const KelString& text, const KelString& code, int severityLevel, const KelString& furtherText)
        : text_(text), code_(code), severityLevel_(severityLevel), furtherText_(furtherText) {}

    /// The message, parameters filled in, without its code.
    [[nodiscard]] const KelString& getText() const { return text_; }
    /// The full message code, such as "QEV_RRSE_S0013".
    [[nodiscard]] const KelString& getCode() const { return code_; }
    [[nodiscard]] int getSeverityLevel() const { return severityLevel_; }
    [[nodiscard]] const KelString& getFurtherText() const { return furtherText_; }

private:
    KelString text_;
    KelString code_;
    int severityLevel_;
    KelString furtherText_;
};
