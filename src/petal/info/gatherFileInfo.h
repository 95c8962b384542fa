#pragma once

#include "notation/ByteSource.h"
#include "notation/damage.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// A part of a model that may be kept in a file of its own.
struct ControlledUnit {
    std::string kind;
    std::string name;
    std::string file; ///< as the model names it, path symbols included; empty when it names none
    bool isLoaded = false;
    notation::Place place;
};

struct DiagramInfo {
    std::string kind;
    std::string name;
};

/// What a model file is and holds. Texts are UTF-8, or bytes of an encoding that is not known.
struct FileInfo {
    bool isModel = false; ///< it begins with the header of a model file; if not, nothing else is told
    std::optional<std::int64_t> version;
    std::string written; ///< what wrote it
    std::optional<std::int64_t> charSet;
    const char* encoding = nullptr; ///< the one that `charSet` means; null when it means none

    std::uint64_t objectCount = 0;
    std::map<std::string, std::uint64_t, std::less<>> objects; ///< how many of each kind
    std::uint64_t propertyCount = 0;
    std::vector<ControlledUnit> units;
    std::vector<DiagramInfo> diagrams;

    std::uint64_t damageCount = 0;
    std::vector<notation::Damage> damages; ///< the first of them
};

/// What to do about a file that is no model file, judged by its first bytes, in whole sentences.
[[nodiscard]] const char* foreignFormatAdvice(std::string_view head);

/// How many damages and how many kinds of objects are told one by one; further kinds are counted as `otherKinds`.
inline constexpr std::size_t mostDamages = 1000;
inline constexpr std::size_t mostKinds = 10'000;
inline constexpr const char* otherKinds = "(others)";

/// Reads a file to its end, unless it is no model file. Throws `std::system_error` when it cannot be read.
[[nodiscard]] FileInfo gatherFileInfo(notation::ByteSource& source);

} // namespace petal
