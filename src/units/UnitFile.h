#pragma once

#include "notation/Place.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace units {

/// A run of bytes of a file: from the offset `begin` to the one before `end`.
struct Range {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
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
    std::string kind; ///< of the object behind the header; empty when there is none
    std::string name; ///< of the same
    Range content;    ///< that object
    std::vector<UnitReference> references;
};

/// Reads a file to its end, or to its content when `references` are not asked for. Throws `std::system_error` when it
/// cannot be read.
enum class Extent { headAndKind, whole };
[[nodiscard]] UnitFile readUnitFile(const std::filesystem::path& path, Extent extent);

/// Whether a file may hold references: whether it says "is_loaded FALSE" anywhere. Costs much less than reading it.
/// Throws `std::system_error`.
[[nodiscard]] bool mayHoldReferences(const std::filesystem::path& path);

} // namespace units
