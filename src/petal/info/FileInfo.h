#pragma once

#include "notation/damage.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
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

} // namespace petal
