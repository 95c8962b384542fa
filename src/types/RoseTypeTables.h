#pragma once

#include <array>
#include <string_view>

namespace rose {

/// A C++ spelling and what it stands for. A spelling is looked up by the first row whose key it begins with.
struct RoseTypeRow {
    const char* key;
    const char* value;
};

/// From a C++ spelling to the name of its logical base type; ended by a row of null texts.
extern const std::array<RoseTypeRow, 20> RosePhysicalToLogical;

/// From a C++ spelling to its SQL data type; ended by a row whose key is "undefined".
extern const std::array<RoseTypeRow, 20> RosePhysicalToPhysical;

/// The value of the first row before the end of the table whose key is a prefix of the spelling, or null.
[[nodiscard]] const char* findRoseType(const std::array<RoseTypeRow, 20>& table, std::string_view spelling);

} // namespace rose
