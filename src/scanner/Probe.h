#pragma once

#include "scanner/Bytes.h"
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

/// A tail that is a run: spaces or `otherBlank`, an optional quote, and all up to a quote, a newline or `otherStop`.
struct TailRun {
    bool needsBlank;
    char otherBlank;
    char otherStop;
};

/// In the order of `Tail`, as far as they are runs.
inline constexpr std::array<TailRun, 4> tailRuns{{
    {true, '\t', '"'},  // valueTail
    {true, '\t', ')'},  // flagTail
    {false, '\t', '"'}, // looseTail
    {true, ' ', '"'},   // spaceTail
}};

constexpr bool isRun(Tail tail) {
    return static_cast<std::size_t>(tail) < tailRuns.size();
}

/// A pattern made ready for comparing at a place where its keyword's family has been seen.
struct alignas(128) Probe {
    static constexpr std::size_t chunks = 2;
    /// How many letters of the keyword are compared: those that decide the family, and those that `isAt` compares.
    static constexpr std::size_t compared = keywords::startLength + 8 * chunks;

    std::uint64_t prefix = 0; ///< the eight bytes before the keyword, irrelevant ones masked out
    std::uint64_t prefixMask = 0;
    std::array<std::uint64_t, chunks> rest{}; ///< the bytes after the letters of the family, likewise
    std::array<std::uint64_t, chunks> restMask{};
    LeadRange lead{};
    TailRun run{};
    bool isUsual = false; ///< `isAt` compares the whole literal, and the tail is a run
    std::uint8_t prefixLength = 0;
    std::uint8_t keywordLength = 0;
    std::uint8_t pattern = 0; ///< index into the table

    Probe() = default;
    explicit constexpr Probe(std::uint8_t index);

    /// Whether the literal, as far as it is compared here, is around the keyword whose first letters are at `word`, and
    /// followed, if the tail begins with a blank, by a byte that may be one.
    [[nodiscard]] bool isAt(const char* word) const {
        std::uint64_t differences = (bytes::load64(word - 8) ^ prefix) & prefixMask;
        for (std::size_t chunk = 0; chunk < chunks; ++chunk) {
            const std::uint64_t letters = bytes::load64(word + keywords::startLength + 8 * chunk);
            differences |= (letters ^ rest[chunk]) & restMask[chunk];
        }
        return differences == 0;
    }
};

constexpr Probe::Probe(std::uint8_t index) : pattern(index) {
    const Pattern& source = patterns[index];
    const std::string_view word = keywords::keyword(source);
    prefixLength = static_cast<std::uint8_t>(keywords::prefixLength(source));
    keywordLength = static_cast<std::uint8_t>(word.size());
    lead = leadRanges[static_cast<std::size_t>(source.lead)];
    run = isRun(source.tail) ? tailRuns[static_cast<std::size_t>(source.tail)] : TailRun{};
    isUsual = isRun(source.tail) && source.literal.second.empty() && word.size() <= compared;

    prefix = bytes::packed(source.literal.first.substr(0, prefixLength), 8 - prefixLength);
    prefixMask = bytes::packedMask(prefixLength, 8 - prefixLength);
    const auto compare = [&](std::size_t at, unsigned char byte, unsigned char mask) {
        if (at < compared) {
            const std::size_t offset = at - keywords::startLength;
            rest[offset / 8] |= std::uint64_t{byte} << (offset % 8 * 8);
            restMask[offset / 8] |= std::uint64_t{mask} << (offset % 8 * 8);
        }
    };
    for (std::size_t at = keywords::startLength; at < word.size(); ++at) {
        compare(at, static_cast<unsigned char>(word[at]), 0xFF);
    }
    if (run.needsBlank && source.literal.second.empty()) {
        compare(word.size(), bytes::blankBits, bytes::blankMask); // rules out the letters of longer keywords
    }
}

static_assert(keywords::longestPrefix <= 8);

/// The probes of all patterns, each family's side by side.
inline constexpr std::array<Probe, ruleCount> probes = [] {
    std::array<Probe, ruleCount> result{};
    for (std::size_t place = 0; place < ruleCount; ++place) {
        result[place] = Probe(keywords::byFamily[place]);
    }
    return result;
}();

} // namespace rose
