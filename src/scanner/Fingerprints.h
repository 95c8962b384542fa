#pragma once

#include "scanner/Keywords.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace rose {

/// The assignment of patterns to groups. Any assignment is right; a better one lets fewer places of a text pass where
/// no keyword starts.
namespace fingerprints {

inline constexpr std::size_t groupCount = 8;
/// How many letters of a keyword are looked at.
inline constexpr std::size_t letterCount = 4;

/// The halves that the bytes at one place of some words have: bit n is set for the half n.
struct Halves {
    std::uint16_t lower = 0;
    std::uint16_t upper = 0;
};

/// Patterns that are not distinguished from each other.
struct Group {
    std::array<Halves, letterCount> letters{};
    bool anywhere = false;   ///< whether one of them needs no blank before its keyword
    std::uint64_t width = 0; ///< proportional to how many texts pass for the start of one of them

    constexpr Group() = default;
    explicit constexpr Group(const Pattern& pattern) : anywhere(!keywords::followsBlank(pattern)) {
        const std::string_view word = keywords::keyword(pattern);
        for (std::size_t at = 0; at < letterCount; ++at) {
            const auto letter = static_cast<unsigned char>(at < word.size() ? word[at] : 0);
            letters[at].lower = static_cast<std::uint16_t>(1U << (letter % 16U));
            letters[at].upper = static_cast<std::uint16_t>(1U << (letter / 16U));
            if (at >= word.size()) { // any byte may follow a short keyword
                letters[at] = {0xFFFF, 0xFFFF};
            }
        }
    }

    constexpr void add(const Group& other) {
        anywhere = anywhere || other.anywhere;
        width = anywhere ? 8 : 1; // about every eighth byte follows a blank
        for (std::size_t at = 0; at < letterCount; ++at) {
            Halves& halves = letters[at];
            halves.lower |= other.letters[at].lower;
            halves.upper |= other.letters[at].upper;
            width *= static_cast<std::uint64_t>(std::popcount(halves.lower) * std::popcount(halves.upper));
        }
    }
};

/// Puts every pattern where it widens the groups least; then, all others being placed, again, a few times.
inline constexpr std::array<Group, groupCount> groups = [] {
    constexpr std::size_t nowhere = groupCount;
    std::array<Group, ruleCount> single;
    std::transform(patterns.begin(), patterns.end(), single.begin(), [](const Pattern& each) { return Group(each); });
    std::array<std::size_t, ruleCount> groupOf{};
    groupOf.fill(nowhere);
    std::array<Group, groupCount> result{};
    for (int round = 0; round < 4; ++round) {
        for (std::size_t index = 0; index < ruleCount; ++index) {
            if (const std::size_t left = std::exchange(groupOf[index], nowhere); left != nowhere) {
                result[left] = {};
                for (std::size_t other = 0; other < ruleCount; ++other) {
                    if (groupOf[other] == left) {
                        result[left].add(single[other]);
                    }
                }
            }
            Group chosen;
            std::uint64_t least = ~std::uint64_t{0};
            for (std::size_t group = 0; group < groupCount; ++group) {
                Group wider = result[group];
                wider.add(single[index]);
                if (const std::uint64_t widening = wider.width - result[group].width; widening < least) {
                    least = widening;
                    chosen = wider;
                    groupOf[index] = group;
                }
            }
            result[groupOf[index]] = chosen;
        }
    }
    return result;
}();

} // namespace fingerprints

/// A coarse description of how all keywords start, in tables so small that a vector instruction looks up sixteen bytes
/// and more at once. The patterns are dealt out to eight groups, a bit for each. For every letter one table says by the
/// lower half of a byte, and one by its upper half, which groups have a pattern with such a letter there. Where a
/// keyword starts, the bit of its group is set in the entries of all the letters, and in what the byte before them
/// allows.
namespace fingerprints {

/// Sets of groups, by the half of a byte; the 16 of them over and over, for the look-ups of the longest vectors.
using HalfTable = std::array<std::uint8_t, 64>;

struct LetterTables {
    alignas(64) HalfTable lower{};
    alignas(64) HalfTable upper{};
};

/// By the letter's place in the keyword.
inline constexpr std::array<LetterTables, letterCount> letterTables = [] {
    std::array<LetterTables, letterCount> tables{};
    for (std::size_t group = 0; group < groupCount; ++group) {
        for (std::size_t at = 0; at < letterCount; ++at) {
            for (std::size_t index = 0; index < tables[at].lower.size(); ++index) {
                const Halves& halves = groups[group].letters[at];
                const std::size_t half = index % 16;
                tables[at].lower[index] |= static_cast<std::uint8_t>((halves.lower >> half & 1U) << group);
                tables[at].upper[index] |= static_cast<std::uint8_t>((halves.upper >> half & 1U) << group);
            }
        }
    }
    return tables;
}();

/// The groups that a place is in that follows no blank; one that does is in all of them.
inline constexpr std::uint8_t groupsAnywhere = [] {
    std::uint8_t set = 0;
    for (std::size_t group = 0; group < groupCount; ++group) {
        set |= static_cast<std::uint8_t>((groups[group].anywhere ? 1U : 0U) << group);
    }
    return set;
}();

} // namespace fingerprints

} // namespace rose
