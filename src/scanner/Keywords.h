#pragma once

#include "scanner/Pattern.h"
#include "scanner/RuleTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

/// What the matcher looks for, derived from the rule table: the keyword of a pattern is the last word of its literal's
/// first part ("Label" of "(object Label"), and its prefix what stands before that word. A match is found by its
/// keyword; patterns whose keywords start alike form a family.
namespace rose::keywords {

constexpr std::size_t prefixLength(const Pattern& pattern) {
    const std::size_t space = pattern.literal.first.rfind(' ');
    return space == std::string_view::npos ? 0 : space + 1;
}

constexpr std::string_view keyword(const Pattern& pattern) {
    return pattern.literal.first.substr(prefixLength(pattern));
}

/// Whether a blank always stands right before the pattern's keyword.
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
    std::string_view start; ///< what all the keywords begin with, seven letters at the most
    bool followsBlank = true;
    std::uint8_t first = 0; ///< where its patterns begin in `byFamily`
    std::uint8_t count = 0;
};

namespace detail {

/// About the order of how often they stand in a model file: properties before objects, short words before long ones.
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

} // namespace rose::keywords
