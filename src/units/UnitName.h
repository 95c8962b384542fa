#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace units {

/// The parts of a unit's file name in a model. Both "\" and "/" are separators.
struct UnitName {
    std::string symbol;             ///< "CURDIR" of "$CURDIR\a.cat"; empty without a path symbol
    bool isAbsolute = false;        ///< it begins with a separator, or with a drive such as "C:"
    std::vector<std::string> parts; ///< folders and file, without empty parts, "." and the drive
};

/// The path symbol of the name, without "$". Empty if there is none, and for $CURDIR, which always means the folder of
/// the file that names the unit.
[[nodiscard]] std::string_view pathSymbol(const UnitName& name);

/// Parses a name. `text` must not contain the escapes of the notation any more.
[[nodiscard]] UnitName parseUnitName(std::string_view text);

} // namespace units
