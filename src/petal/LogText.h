#pragma once

#include "host/encoding/KelEncodingConverter.h"
#include "host/text/KelString.h"

namespace petal {

/// Brings the texts of log events to UTF-8: they quote names from the model file in the file's encoding.
class LogText {
public:
    /// An unknown encoding leaves texts as they are.
    explicit LogText(const KelString& encoding);

    /// `text` in UTF-8. Bytes that the encoding does not have become U+FFFD.
    [[nodiscard]] KelString toUtf8(const KelString& text);

private:
    KelEncodingConverter from_;
    KelEncodingConverter utf8_;
    bool converts_; // false as well for an encoding without ASCII, which the messages around the names are in
};

} // namespace petal
