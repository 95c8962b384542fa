#pragma once

#include "scanner/Bytes.h"
#include "scanner/Keywords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

/// The families of keywords, found by their first three letters.
namespace rose {

/// What eight bytes are compared with: the byte before a word and the word's first seven.
struct FamilyEntry {
    std::uint64_t bytes; ///< as a load gives them
    std::uint64_t mask;
    std::uint8_t probe = 0; ///< the first of the family's probes
    std::uint8_t count = 0;

    /// No family: it takes bytes that are no text.
    constexpr FamilyEntry() : bytes(~std::uint64_t{0}), mask(~std::uint64_t{0}) {}

    explicit constexpr FamilyEntry(const keywords::Family& family)
        : bytes(rose::bytes::packed(family.start, 1)), mask(rose::bytes::packedMask(family.start.size(), 1)),
          probe(family.first), count(family.count) {
        if (family.followsBlank) {
            // Both blanks pass, and a few bytes more.
            bytes |= rose::bytes::blankBits;
            mask |= rose::bytes::blankMask;
        }
    }

    [[nodiscard]] bool matches(std::uint64_t text) const { return ((text ^ bytes) & mask) == 0; }
};

namespace detail {

inline constexpr int slotBits = 8;

/// Only the first three letters count: factors are multiples of 2^8.
constexpr std::size_t familySlot(std::uint64_t bytes, std::uint32_t factor) {
    static_assert(keywords::startLength == 3);
    return (static_cast<std::uint32_t>(bytes >> 8U) * factor) >> (32 - slotBits);
}

constexpr std::size_t familySlot(const keywords::Family& family, std::uint32_t factor) {
    return familySlot(FamilyEntry(family).bytes, factor);
}

/// A factor with which no two families share a slot.
consteval std::uint32_t findFactor() {
    for (std::uint32_t factor = 0x9E3779B1U;; factor = factor * 1664525U + 1013904223U) {
        std::array<bool, std::size_t{1} << slotBits> taken{};
        const bool fits =
            std::all_of(keywords::families.begin(), keywords::families.end(), [&](const keywords::Family& family) {
                return !std::exchange(taken[familySlot(family, factor & ~0xFFU)], true);
            });
        if (fits) {
            return factor & ~0xFFU;
        }
    }
}

inline constexpr std::uint32_t factor = findFactor();

inline constexpr std::array<FamilyEntry, std::size_t{1} << slotBits> familyTable = [] {
    std::array<FamilyEntry, std::size_t{1} << slotBits> table{};
    table.fill(FamilyEntry()); // g++ 12 leaves zeros in elements that only their constructor has set
    for (const keywords::Family& family : keywords::families) {
        table[familySlot(family, factor)] = FamilyEntry(family);
    }
    return table;
}();

} // namespace detail

/// The only family that a word may be of, given the byte before it and its first seven.
inline const FamilyEntry& familyEntry(std::uint64_t bytes) {
    return detail::familyTable[detail::familySlot(bytes, detail::factor)];
}

} // namespace rose
