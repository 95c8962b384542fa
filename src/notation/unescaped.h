#pragma once

#include <string>
#include <string_view>

namespace notation {

/// A quoted text without the backslashes that escape a quote or a backslash. Any other backslash stays.
[[nodiscard]] std::string unescaped(std::string_view text);

} // namespace notation
