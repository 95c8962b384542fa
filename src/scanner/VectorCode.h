#pragma once

#include "scanner/Block.h"

#include <span>

namespace rose {

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
