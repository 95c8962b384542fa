#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace rose {

/// How many bytes are searched for keywords at a time.
inline constexpr std::size_t blockSize = 8192;

/// A place of a block where a keyword starts, as far as its first letters tell.
struct Place {
    std::uint16_t offset; ///< from the start of the block
    std::uint8_t probe;   ///< the first of the probes that may match around it
    std::uint8_t count;   ///< how many there are
};

/// The places of one block, in order.
struct PlaceList {
    // Behind the last element of what was found the search leaves what it took for the next one.
    static constexpr std::size_t capacity = blockSize + 4;

    std::array<Place, capacity> places;
    std::size_t count = 0;
};

/// The part of the input that is buffered.
struct Window {
    const char* begin; ///< the first byte that is not consumed
    const char* limit; ///< behind the last byte; here and behind it stand NULs
    bool ended;        ///< whether the input ends at `limit`
};

/// A match: where it lies, in bytes from the start of the block that its keyword is in.
struct Match {
    std::int64_t begin;
    std::int64_t end;
    std::uint16_t rule;
    std::uint16_t place; ///< the keyword's index in the list of places
};

/// The next matches of a block, in order.
struct MatchBatch {
    /// A batch that an action spoils, by consuming text behind its match, is made anew from there on; it is small so
    /// that this costs little.
    static constexpr std::size_t capacity = 32;

    std::array<Match, capacity> matches;
    std::size_t count = 0;
    /// Where the match behind them begins, if more text must be buffered to know it; null otherwise.
    const char* undecided = nullptr;
};

} // namespace rose
