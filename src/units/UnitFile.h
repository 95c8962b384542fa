#pragma once

#include "notation/Place.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace units {

/// A run of bytes of a file: from the offset `begin` to the one before `end`.
struct Range {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

inline constexpr std::string_view packageKind = "Class_Category";
/// The name that the import requires of the root of the packages. It ignores everything outside of that root.
inline constexpr std::string_view logicalView = "Logical View";

/// The head of a package whose name is in quotes.
struct PackageHead {
    std::string name; ///< bytes in the file's encoding, with escapes
    Range nameRange;  ///< without the quotes
    notation::Place place;
};

/// An object whose content is in another file: is_unit is TRUE and is_loaded is FALSE. An object within such an object
/// does not count, since the outer one is replaced as a whole.
struct UnitReference {
    std::string kind;
    std::string name;     ///< bytes in the file's encoding, without escapes
    std::string fileName; ///< likewise; empty if there is none
    notation::Place place;
    Range range;
    bool isClosed = true; ///< the range ends with its parenthesis
};

/// The parts of a file that matter for controlled units.
struct UnitFile {
    bool isModel = false; ///< it begins with the header of a model file; if not, the rest is empty
    std::optional<std::int64_t> charSet;
    bool isHeaderClosed = false;     ///< if not, the file may end within the header's numbers
    std::string kind;                ///< of the object after the header; empty if there is none
    std::string name;                ///< of the same
    Range content;                   ///< that object
    std::optional<PackageHead> head; ///< of that object when it is a package
    /// The root_category of that object if it is a Design: one with the name "Logical View" if there is one, otherwise
    /// the first. A package of that name before it counts as the root, since the import begins with it.
    std::optional<PackageHead> root;
    std::vector<UnitReference> references;
};

/// Whether a model is a package without a Design: its file is a unit of another model.
[[nodiscard]] bool isLonePackage(const UnitFile& model);

/// Reads a file: `whole` to its end, `headAndKind` only to its content, without `root` and `references`. Throws
/// `std::system_error` when it cannot be read.
enum class Extent { headAndKind, whole };
[[nodiscard]] UnitFile readUnitFile(const std::filesystem::path& path, Extent extent);

/// Whether a file may have references or a root with another name than "Logical View": it contains "is_loaded FALSE",
/// or its first "root_category" is followed by anything but that name. Throws `std::system_error`. Costs much less than
/// `readUnitFile`.
[[nodiscard]] bool mayNeedAssembly(const std::filesystem::path& path);

} // namespace units
