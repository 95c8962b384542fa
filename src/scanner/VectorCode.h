#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

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

/// The two inner loops of the scanner. They exist once for every set of vector instructions that a processor may have;
/// all of them give the same results.
struct VectorCode {
    /// How far around the buffered text they load bytes. Before it no letter may stand, behind it only NULs.
    static constexpr std::size_t readBefore = 32;
    static constexpr std::size_t readBehind = 80;

    const char* instructions; ///< the set's name

    /// Finds the places in the block of `size` bytes at `text`, of at most `blockSize`: every place where the first
    /// letters of a keyword stand, and before it, where that must be a blank, a byte that passes for one (Bytes.h).
    /// PRECONDITION: of a keyword that starts in the block the first letters are buffered.
    void (*findPlaces)(const char* text, std::size_t size, PlaceList& places);

    /// Makes the matches around `places`, from the one numbered `next` on, until the batch is full, the places are at
    /// an end or a match is undecided; then `next` is the first place that has not been dealt with. No match begins
    /// before `window.begin` or before the end of the one before it. PRECONDITION: every keyword at a place and the
    /// byte behind it are buffered, or the input ends before them.
    void (*growMatches)(const PlaceList& places, std::size_t& next, const char* block, const Window& window,
                        MatchBatch& batch);
};

/// Those that this processor can run, the fastest first.
std::span<const VectorCode> vectorCodes();

} // namespace rose
