#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// One entry of a log: an immutable record that owns its texts. They are UTF-8, except that names and texts quoted from
/// a model file are in the encoding of that file. Making one may throw `std::bad_alloc`.
class KEL_API KelLogEvent {
public:
    /// `severityLevel` is a level of Severity.h; `furtherText` is an addition to the message, or empty.
    KelLogEvent(const KelString& text, const KelString& code, int severityLevel, const KelString& furtherText)
        : text_(text), code_(code), severityLevel_(severityLevel), furtherText_(furtherText) {}

    /// The message with its parameters filled in, without the code.
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
