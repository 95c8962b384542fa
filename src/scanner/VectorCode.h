#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace rose {

/// How many bytes are searched for keywords at a time.
inline constexpr std::size_t blockSize = 8192;

/// A place of a block where the first letters of a keyword are.
struct Place {
    std::uint16_t offset; ///< from the start of the block
    std::uint8_t probe;   ///< the first of the probes that may match around it
    std::uint8_t count;   ///< how many there are
};

/// The places of one block, in order.
struct PlaceList {
    // The search writes candidates for the next place after the last one.
    static constexpr std::size_t capacity = blockSize + 4;

    std::array<Place, capacity> places;
    std::size_t count = 0;
};

/// The part of the input that is buffered.
struct Window {
    const char* begin; ///< the first byte that is not consumed
    const char* limit; ///< after the last byte; followed by NULs, also here
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
    /// Small, because a batch is made anew when an action consumes text after its match.
    static constexpr std::size_t capacity = 32;

    std::array<Match, capacity> matches;
    std::size_t count = 0;
    /// Where the next match begins, if it cannot be decided before more text is buffered; null otherwise.
    const char* undecided = nullptr;
};

/// The two inner loops of the scanner. They exist once for every set of vector instructions that a processor may have;
/// all of them give the same results.
struct VectorCode {
    /// How far around the buffered text they load bytes. PRECONDITION: no letters before it, only NULs after it.
    static constexpr std::size_t readBefore = 32;
    static constexpr std::size_t readBehind = 80;

    const char* instructions; ///< the set's name

    /// Finds the places in the block of `size` bytes (at most `blockSize`) at `text`: every place with the first
    /// letters of a keyword, and before it, where the keyword needs a blank, a byte that passes for one (Bytes.h).
    /// PRECONDITION: the first letters of a keyword that starts in the block are buffered.
    void (*findPlaces)(const char* text, std::size_t size, PlaceList& places);

    /// Makes the matches around `places`, from number `next`, until the batch is full, no places are left or a match is
    /// undecided; then `next` is the first place that remains. No match begins before `window.begin` or before the end
    /// of the previous one. PRECONDITION: every keyword at a place and the byte after it are buffered, unless the input
    /// ends before them.
    void (*growMatches)(const PlaceList& places, std::size_t& next, const char* block, const Window& window,
                        MatchBatch& batch);
};

/// Those that this processor can run, the fastest first.
std::span<const VectorCode> vectorCodes();

} // namespace rose
