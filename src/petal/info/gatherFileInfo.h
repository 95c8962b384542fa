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

/// A part of a model that may be kept in a separate file.
struct ControlledUnit {
    std::string kind;
    std::string name;
    std::string file; ///< as in the model, with path symbols; empty if there is none
    bool isLoaded = false;
    notation::Place place;
};

struct DiagramInfo {
    std::string kind;
    std::string name;
};

/// The header and contents of a model file. Texts are UTF-8, or bytes of an unknown encoding.
struct FileInfo {
    bool isModel = false; ///< it begins with the header of a model file; if not, the rest is empty
    std::optional<std::int64_t> version;
    std::string written; ///< the tool that wrote it
    std::optional<std::int64_t> charSet;
    const char* encoding = nullptr; ///< the one that `charSet` means; null if it means none

    std::uint64_t objectCount = 0;
    std::map<std::string, std::uint64_t, std::less<>> objects; ///< numbers by kind
    std::uint64_t propertyCount = 0;
    std::vector<ControlledUnit> units;
    std::vector<DiagramInfo> diagrams;

    std::uint64_t damageCount = 0;
    std::vector<notation::Damage> damages; ///< the first `mostDamages`
};

/// Advice for the user about a file that is not a model file, from its first bytes; whole sentences.
[[nodiscard]] const char* foreignFormatAdvice(std::string_view head);

/// The numbers of damages and of kinds of objects that are listed. Further kinds are counted as `otherKinds`.
inline constexpr std::size_t mostDamages = 1000;
inline constexpr std::size_t mostKinds = 10'000;
inline constexpr const char* otherKinds = "(others)";

/// Reads a file to its end; if it is not a model file, only its start. Throws `std::system_error` when it cannot be
/// read. Memory is limited except for units and diagrams, which are all listed.
[[nodiscard]] FileInfo gatherFileInfo(notation::ByteSource& source);

} // namespace petal
