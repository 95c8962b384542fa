#pragma once

#include "units/UnitFile.h"
#include "units/UnitLocator.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace units {

/// The outcome of a reference to a unit.
enum class UnitState : std::uint8_t {
    found,
    missing,  ///< its file does not exist, or the reference names none
    unusable, ///< the file cannot be read, or is not a unit of the reference's kind
    repeated, ///< its content is elsewhere in the model
    cycle,    ///< it is a unit that contains this reference
};

/// The start of the remark of a unit that is `UnitFault::unreadable`; the error follows.
inline constexpr std::string_view unreadableRemark = "it cannot be read: ";

struct Unit {
    UnitReference reference;
    UnitName name; ///< the parsed `fileName` of the reference, in the local encoding
    UnitState state = UnitState::missing;
    UnitFault fault = UnitFault::none; ///< of a unit that is lost
    bool isWhereNamed = false;         ///< the file was found by its path, not only by its name
    std::size_t file = 0;              ///< in `UnitTree::files`; of a unit that was `found`, `repeated` or a `cycle`
    std::filesystem::path path;        ///< of its file; empty if it is `missing`
    std::string remark;                ///< half a sentence for people: why or how it was found or not; may be empty
};

struct ResolvedFile {
    std::filesystem::path path;
    std::size_t parent = 0; ///< the file that names it; the model is its own parent
    UnitFile contents;
    std::vector<Unit> units; ///< in the order of the file
};

/// A model and the files of its controlled units, each file once.
struct UnitTree {
    std::vector<ResolvedFile> files; ///< the model first, then in the order of their contents in it

    /// Whether the contents of all units are in the model.
    [[nodiscard]] bool isComplete() const;
};

/// Whether a unit's content is missing from the model.
[[nodiscard]] bool isLost(const Unit& unit);

/// Reads the model and finds the files of its units, of the units in them, and so on. Throws `std::system_error` when
/// the model cannot be read; faults of units are in the tree. Time is proportional to the files, at any depth.
[[nodiscard]] UnitTree readUnitTree(const std::filesystem::path& model, UnitLocator& locator);

} // namespace units
