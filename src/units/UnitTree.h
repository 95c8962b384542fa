#pragma once

#include "units/UnitFile.h"
#include "units/UnitLocator.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace units {

/// What became of a reference to a unit.
enum class UnitState : std::uint8_t {
    found,
    missing,  ///< there is no such file, or it names none
    unusable, ///< the file cannot be read, or it is no unit of the kind
    repeated, ///< its content stands somewhere else in the model
    cycle,    ///< it is a unit that this reference itself stands in
};

/// What stands ahead of the reason in the remark of a unit that is `UnitFault::unreadable`.
inline constexpr std::string_view unreadableRemark = "it cannot be read: ";

struct Unit {
    UnitReference reference;
    UnitName name; ///< what the reference's `fileName` comes to, in the local encoding
    UnitState state = UnitState::missing;
    UnitFault fault = UnitFault::none; ///< of a unit that is lost
    bool isWhereNamed = false;         ///< the file is; not only its name was found somewhere
    std::size_t file = 0;              ///< in `UnitTree::files`; of a unit that was `found`, `repeated` or a `cycle`
    std::filesystem::path path;        ///< of its file; empty when it is `missing`
    std::string remark;                ///< half a sentence for people: why it was not found, or how; may be empty
};

struct ResolvedFile {
    std::filesystem::path path;
    std::size_t parent = 0; ///< the file that names it; of the model itself its own
    UnitFile contents;
    std::vector<Unit> units; ///< in the order of the file
};

/// A model and the files of its controlled units, each of them once.
struct UnitTree {
    std::vector<ResolvedFile> files; ///< the model first, then in the order in which the contents stand in it

    /// Whether any unit's content is not in the model.
    [[nodiscard]] bool isComplete() const;
};

/// Whether a unit's content is wanted and not there.
[[nodiscard]] bool isLost(const Unit& unit);

/// Reads the model and finds the files of its units, of the units in them, and so on. Throws `std::system_error` when
/// the model cannot be read. Costs what the files are long, however deep they nest.
[[nodiscard]] UnitTree readUnitTree(const std::filesystem::path& model, UnitLocator& locator);

} // namespace units
