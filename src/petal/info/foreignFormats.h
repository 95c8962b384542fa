#pragma once

#include <cstddef>
#include <string_view>

namespace petal {

/// How many of the first bytes of a file tell what it is.
inline constexpr std::size_t formatHeadLength = 16;

/// What to do about a file that is no model file, judged by its first bytes, in whole sentences.
[[nodiscard]] const char* foreignFormatAdvice(std::string_view head);

} // namespace petal
