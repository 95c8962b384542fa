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
/// The name by which the import knows the root of the packages; it takes nothing outside of that.
inline constexpr std::string_view logicalView = "Logical View";

/// The head of a package that has its name in quotes.
struct PackageHead {
    std::string name; ///< bytes in the file's encoding, with escapes
    Range nameRange;  ///< without the quotes
    notation::Place place;
};

/// An object that stands for one whose content is in another file: is_unit is TRUE and is_loaded is not. One within
/// another is none: its place goes when the other's content comes.
struct UnitReference {
    std::string kind;
    std::string name;     ///< bytes in the file's encoding, without escapes
    std::string fileName; ///< likewise; empty when it names none
    notation::Place place;
    Range range;
    bool isClosed = true; ///< the range ends with its parenthesis
};

/// A file as far as controlled units matter.
struct UnitFile {
    bool isModel = false; ///< it begins with the header of a model file; if not, nothing else is told
    std::optional<std::int64_t> charSet;
    bool isHeaderClosed = false;     ///< if not, the file may end within the header's numbers
    std::string kind;                ///< of the object behind the header; empty when there is none
    std::string name;                ///< of the same
    Range content;                   ///< that object
    std::optional<PackageHead> head; ///< of that object when it is a package
    /// The root_category of that object when it is a Design: one that is named "Logical View" if there is one,
    /// otherwise the first. A package of that name in front of it counts as the root, since the import begins with it.
    std::optional<PackageHead> root;
    std::vector<UnitReference> references;
};

/// Whether a model is a package by itself, without a Design: its file is a unit of some other model.
[[nodiscard]] bool isLonePackage(const UnitFile& model);

/// Reads a file to its end, or to its content when neither `root` nor `references` are asked for. Throws
/// `std::system_error` when it cannot be read.
enum class Extent { headAndKind, whole };
[[nodiscard]] UnitFile readUnitFile(const std::filesystem::path& path, Extent extent);

/// Whether a file may hold references, or a root of another name than "Logical View": whether it says "is_loaded FALSE"
/// anywhere, or something else than that name behind its first "root_category". Costs much less than reading it. Throws
/// `std::system_error`.
[[nodiscard]] bool mayNeedAssembly(const std::filesystem::path& path);

} // namespace units
