#pragma once

#include "host/log/KelLogEvent.h"

#include <string>
#include <string_view>

namespace petal {

/// A format of log lines.
struct LogFormat {
    std::string_view name;
    /// The line of an event with its line end: valid UTF-8 without control characters. `text` is in UTF-8 or, in an
    /// unknown encoding, any bytes.
    std::string (*line)(const KelLogEvent& event, std::string_view text);
    /// A line of `line` with the name of the file that it is about.
    std::string (*lineOf)(std::string_view line, std::string_view file);
};

/// The format of that name, or null.
[[nodiscard]] const LogFormat* findLogFormat(std::string_view name);

} // namespace petal
