#pragma once

#include "host/encoding/KelTextDecoder.h"
#include "ledger/Ledger.h"

#include <functional>
#include <string>
#include <string_view>

namespace ledger {

/// Finds the bytes of a file that are invalid in its encoding, while the file is read block by block. Used by one
/// thread. Holds at most 128 KiB. Time is proportional to the bytes, and small for those that are ASCII.
class BadByteSearch {
public:
    /// Called for each run of invalid bytes, in order. May throw.
    using Take = std::function<void(const BadBytes& bytes)>;
    /// What is told of their places.
    enum class Places : std::uint8_t { offsets, lines };

    BadByteSearch(const KelString& encoding, std::uint32_t file, Places places, Take take);

    /// Takes the next block of the file, of any size; an empty one ends it.
    void read(std::string_view block);

private:
    void readPiece(std::string_view piece);
    void decode(std::string_view text, std::uint64_t offset);
    void countLines(std::uint64_t end);
    void endPiece();

    KelTextDecoder decoder_;
    BadBytes bad_;
    Places places_;
    Take take_;
    std::uint64_t offset_ = 0;     // of the next byte to be read
    std::uint64_t lineOffset_ = 0; // of the line, or part of one, that is being read
    std::string held_;             // of that line from the first byte that is not ASCII on
    std::uint64_t heldOffset_ = 0;
    std::string_view piece_;      // from `offset_` on, while it is read
    std::uint64_t counted_ = 0;   // the offset up to which lines were counted
    std::uint64_t line_ = 1;      // there
    std::uint64_t lineBegin_ = 0; // the offset of that line
};

} // namespace ledger
