#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace units {

/// The name under which a model names the file of a controlled unit, taken apart. Both "\" and "/" separate.
struct UnitName {
    std::string symbol;             ///< "CURDIR" of "$CURDIR\a.cat"; empty without a path symbol
    bool isAbsolute = false;        ///< it begins with a separator, or with a drive such as "C:"
    std::vector<std::string> parts; ///< folders and file, without empty ones and "."; a drive is left out
};

/// `text` without the escapes of the notation.
[[nodiscard]] UnitName parseUnitName(std::string_view text);

} // namespace units
