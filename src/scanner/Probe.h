#pragma once

#include "scanner/ByteRuns.h"
#include "scanner/Keywords.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace rose {

/// The blanks that a lead may be: spaces and `otherBlank`, of which there are so many.
struct LeadRange {
    std::ptrdiff_t minimum;
    std::ptrdiff_t maximum;
    char otherBlank;
};

inline constexpr std::ptrdiff_t anyNumber = std::numeric_limits<std::ptrdiff_t>::max();

/// In the order of `Lead`.
inline constexpr std::array<LeadRange, 5> leadRanges{{
    {0, 0, ' '},          // noLead
    {1, 1, '\t'},         // oneBlank
    {1, anyNumber, '\t'}, // blanks
    {0, anyNumber, '\t'}, // optionalBlanks
    {0, anyNumber, ' '},  // optionalSpaces
}};

/// A pattern made ready for comparing: where its keyword's family has been seen, `isAt` compares the rest of the
/// literal's first part in a fixed number of steps.
struct Probe {
    static constexpr std::size_t chunks = 3;

    std::uint64_t prefix = 0; ///< the eight bytes before the keyword, those of no concern masked out
    std::uint64_t prefixMask = 0;
    std::array<std::uint64_t, chunks> rest{}; ///< the bytes behind the letters of the family, likewise
    std::array<std::uint64_t, chunks> restMask{};
    bool isLong = false; ///< whether the keyword fills more than the first chunk
    std::uint8_t prefixLength = 0;
    std::uint8_t keywordLength = 0;
    Tail tail = Tail::noTail;
    LeadRange lead{};
    std::string_view secondPart{}; ///< of the literal
    int rule = 0;

    Probe() = default;
    explicit constexpr Probe(const Pattern& pattern);

    /// Whether the literal's first part stands around the keyword whose first letters are at `word`. Reads 8 bytes
    /// before it and `startLength` + 8 * `chunks` bytes from it on.
    [[nodiscard]] bool isAt(const char* word) const {
        const auto differs = [&](std::size_t chunk) {
            return (bytes::load64(word + keywords::startLength + 8 * chunk) ^ rest[chunk]) & restMask[chunk];
        };
        const std::uint64_t prefixDiffers = (bytes::load64(word - 8) ^ prefix) & prefixMask;
        return (prefixDiffers | differs(0)) == 0 && (!isLong || (differs(1) | differs(2)) == 0);
    }
};

constexpr Probe::Probe(const Pattern& pattern) {
    const auto place = [](std::uint64_t& word, std::uint64_t& mask, std::size_t at, char byte) {
        word |= static_cast<std::uint64_t>(static_cast<unsigned char>(byte)) << (8 * at);
        mask |= std::uint64_t{0xFF} << (8 * at);
    };
    const std::string_view literal = pattern.literal.first;
    prefixLength = static_cast<std::uint8_t>(keywords::prefixLength(pattern));
    keywordLength = static_cast<std::uint8_t>(literal.size() - prefixLength);
    for (std::size_t at = 0; at < prefixLength; ++at) {
        place(prefix, prefixMask, 8 - prefixLength + at, literal[at]);
    }
    for (std::size_t at = keywords::startLength; at < keywordLength; ++at) {
        const std::size_t offset = at - keywords::startLength;
        place(rest[offset / 8], restMask[offset / 8], offset % 8, literal[prefixLength + at]);
    }
    secondPart = pattern.literal.second;
    rule = pattern.number;
    isLong = keywordLength > keywords::startLength + 8;
    tail = pattern.tail;
    lead = leadRanges[static_cast<std::size_t>(pattern.lead)];
}

static_assert(keywords::longestPrefix <= 8);
static_assert(keywords::longestKeyword <= keywords::startLength + 8 * Probe::chunks);

/// The probes of all patterns, each family's side by side.
inline constexpr std::array<Probe, ruleCount> probes = [] {
    std::array<Probe, ruleCount> result{};
    for (std::size_t place = 0; place < ruleCount; ++place) {
        result[place] = Probe(patterns[keywords::byFamily[place]]);
    }
    return result;
}();

} // namespace rose
