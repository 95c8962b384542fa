#pragma once

#include "host/log/KelLogEvent.h"

#include <string>
#include <string_view>

namespace petal {

/// A way to write one log event, whose text is given in UTF-8 (or in bytes of an unknown encoding).
struct LogFormat {
    std::string_view name;
    /// One line, its end included; valid UTF-8 that drives no terminal.
    std::string (*line)(const KelLogEvent& event, std::string_view text);
    /// Such a line, with the file that it is about.
    std::string (*lineOf)(std::string_view line, std::string_view file);
};

/// The format of that name, or null.
[[nodiscard]] const LogFormat* findLogFormat(std::string_view name);

} // namespace petal
