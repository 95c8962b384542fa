#pragma once

#include <string_view>

namespace rose {

/// What stands for the name of an association or role that has none.
inline constexpr std::string_view unnamedMark = "$UNNAMED$";

/// Whether the name says that there is none: empty, or beginning with the mark.
[[nodiscard]] inline bool isUnnamed(std::string_view name) {
    return name.empty() || name.starts_with(unnamedMark);
}

} // namespace rose
