#pragma once

#include "scanner/Bytes.h"
#include "scanner/Rule.h"
#include "scanner/RuleTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace rose {

/// The keywords that the matcher searches for, derived from the rule table: the keyword of a pattern is the last word
/// of its literal's first part ("Label" of "(object Label"), and its prefix the text before that word. A match is found
/// by its keyword; patterns whose keywords start alike form a family.
namespace keywords {

constexpr std::size_t prefixLength(const Pattern& pattern) {
    const std::size_t space = pattern.literal.first.rfind(' ');
    return space == std::string_view::npos ? 0 : space + 1;
}

constexpr std::string_view keyword(const Pattern& pattern) {
    return pattern.literal.first.substr(prefixLength(pattern));
}

/// Whether a blank always precedes the pattern's keyword.
constexpr bool followsBlank(const Pattern& pattern) {
    return prefixLength(pattern) != 0 || pattern.lead == Lead::oneBlank || pattern.lead == Lead::blanks;
}

constexpr std::size_t longest(auto length) {
    std::size_t result = 0;
    for (const Pattern& pattern : patterns) {
        result = std::max<std::size_t>(result, length(pattern));
    }
    return result;
}

inline constexpr std::size_t longestPrefix = longest([](const Pattern& pattern) { return prefixLength(pattern); });
inline constexpr std::size_t longestKeyword = longest([](const Pattern& pattern) { return keyword(pattern).size(); });

/// How many letters decide a keyword's family.
inline constexpr std::size_t startLength = 3;

constexpr std::string_view keywordStart(const Pattern& pattern) {
    return keyword(pattern).substr(0, startLength);
}

/// The patterns whose keywords share their first letters. When all the letters that they share are there, and for some
/// families a blank before them, one of the patterns is worth trying.
struct Family {
    std::string_view start; ///< the common beginning of all the keywords, at most seven letters
    bool followsBlank = true;
    std::uint8_t first = 0; ///< where its patterns begin in `byFamily`
    std::uint8_t count = 0;
};

namespace detail {

/// Roughly the order of their frequency in model files: properties before objects, short words before long ones.
constexpr bool isMoreFrequent(const Pattern& left, const Pattern& right) {
    return std::pair(prefixLength(left), keyword(left).size()) < std::pair(prefixLength(right), keyword(right).size());
}

/// The table's indices with each family's patterns side by side, the more frequent ones first.
consteval std::array<std::uint8_t, ruleCount> groupByFamily() {
    std::array<std::uint8_t, ruleCount> grouped{};
    for (std::size_t index = 0; index < ruleCount; ++index) {
        grouped[index] = static_cast<std::uint8_t>(index);
    }
    std::sort(grouped.begin(), grouped.end(), [](std::uint8_t left, std::uint8_t right) {
        const std::string_view leftStart = keywordStart(patterns[left]);
        const std::string_view rightStart = keywordStart(patterns[right]);
        return leftStart == rightStart ? isMoreFrequent(patterns[left], patterns[right]) : leftStart < rightStart;
    });
    return grouped;
}

} // namespace detail

inline constexpr std::array<std::uint8_t, ruleCount> byFamily = detail::groupByFamily();

namespace detail {

constexpr bool startsFamily(std::size_t place) {
    return place == 0 || keywordStart(patterns[byFamily[place]]) != keywordStart(patterns[byFamily[place - 1]]);
}

consteval std::size_t countFamilies() {
    std::size_t count = 0;
    for (std::size_t place = 0; place < ruleCount; ++place) {
        count += startsFamily(place) ? 1 : 0;
    }
    return count;
}

} // namespace detail

inline constexpr std::size_t familyCount = detail::countFamilies();

inline constexpr std::array<Family, familyCount> families = [] {
    std::array<Family, familyCount> result{};
    std::size_t count = 0;
    for (std::size_t place = 0; place < ruleCount; ++place) {
        const Pattern& pattern = patterns[byFamily[place]];
        if (detail::startsFamily(place)) {
            result[count++] = {keyword(pattern).substr(0, 7), true, static_cast<std::uint8_t>(place), 0};
        }
        Family& family = result[count - 1];
        while (!keyword(pattern).starts_with(family.start)) {
            family.start.remove_suffix(1);
        }
        family.followsBlank = family.followsBlank && followsBlank(pattern);
        ++family.count;
    }
    return result;
}();

} // namespace keywords

/// The value that eight bytes are compared with: the byte before a word and the first seven of the word.
struct FamilyEntry {
    std::uint64_t bytes; ///< as a load gives them
    std::uint64_t mask;
    std::uint8_t probe = 0; ///< the first of the family's probes
    std::uint8_t count = 0;

    /// No family: it matches bytes that are not text.
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
