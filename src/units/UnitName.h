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

/// The path symbol of the name, without "$", that has to be told; empty when there is none, or $CURDIR, which stands
/// for the folder of the file that names the unit.
[[nodiscard]] std::string_view pathSymbol(const UnitName& name);

/// `text` without the escapes of the notation.
[[nodiscard]] UnitName parseUnitName(std::string_view text);

} // namespace units
