#pragma once

#include <string>
#include <string_view>

namespace text {

/// Whether `text` is valid UTF-8 in which a JSON writer has to escape nothing but quotes, backslashes and the controls
/// below the blank: a terminal that is shown the document would only show the rest.
[[nodiscard]] bool isSafeJsonText(std::string_view text);

/// `text` as a JSON string, its quotes included: U+FFFD for each invalid sequence, and escapes for all characters that
/// could drive a terminal (see `printableText`).
[[nodiscard]] std::string quotedJsonText(std::string_view text);

} // namespace text
