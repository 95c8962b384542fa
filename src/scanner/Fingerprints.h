#pragma once

#include "scanner/FingerprintGroups.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// A coarse description of how all keywords start, in tables so small that a vector instruction looks up sixteen bytes
/// and more at once. The patterns are dealt out to eight groups, a bit for each. For every letter one table says by the
/// lower half of a byte, and one by its upper half, which groups have a pattern with such a letter there. Where a
/// keyword starts, the bit of its group is set in the entries of all the letters, and in what the byte before them
/// allows.
namespace rose::fingerprints {

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

} // namespace rose::fingerprints
