#pragma once

#include <string_view>

namespace petal {

/// What to do about a file that is no model file, judged by its first bytes, in whole sentences.
[[nodiscard]] const char* foreignFormatAdvice(std::string_view head);

} // namespace petal
