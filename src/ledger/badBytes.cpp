// Finds bytes that are invalid in the encoding of their file.

#include "ledger/BadByteSearch.h"
#include "ledger/SourceText.h"
#include "ledger/makeLedger.h"
#include "notation/ByteRuns.h"
#include "units/OpenFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace ledger {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024; // of a longer line, each such part is decoded by itself

/// The number of line feeds.
std::uint64_t countLineEnds(std::string_view bytes) {
    using notation::runs::Unsigned;
    constexpr std::size_t stride = notation::runs::stride;
    constexpr std::size_t most = UINT8_MAX / sizeof(std::uint64_t); // so that the sum of eight counts is in a byte
    std::uint64_t count = 0;
    while (bytes.size() >= stride) {
        const std::size_t size = std::min(bytes.size() / stride, most) * stride;
        Unsigned counts{}; // by place in the stride
        for (std::size_t at = 0; at < size; at += stride) {
            counts -= std::bit_cast<Unsigned>(notation::runs::load(bytes.data() + at) == '\n');
        }
        for (const std::uint64_t half : std::bit_cast<std::array<std::uint64_t, 2>>(counts)) {
            count += (half * 0x0101'0101'0101'0101U) >> 56; // the sum of its bytes
        }
        bytes.remove_prefix(size);
    }
    return count + static_cast<std::uint64_t>(std::ranges::count(bytes, '\n'));
}

/// The offset of the first byte from `from` on that is not ASCII; the length if there is none. All bytes before it on
/// its line are characters, so that a multi-byte character cannot begin earlier.
std::size_t firstOdd(std::string_view bytes, std::size_t from) {
    using namespace notation;
    constexpr std::size_t step = 4 * runs::stride;
    const char* at = bytes.data() + from;
    const char* const end = bytes.data() + bytes.size();
    const auto part = [&](std::size_t index) { return runs::load(at + index * runs::stride); };
    while (end - at >= static_cast<std::ptrdiff_t>(step) &&
           runs::bitsOf((part(0) | part(1) | part(2) | part(3)) < 0) == 0) {
        at += step;
    }
    for (; end - at >= static_cast<std::ptrdiff_t>(runs::stride); at += runs::stride) {
        if (const std::uint32_t odd = runs::bitsOf(part(0) < 0); odd != 0) {
            return static_cast<std::size_t>(at - bytes.data()) + static_cast<std::size_t>(std::countr_zero(odd));
        }
    }
    return static_cast<std::size_t>(std::find_if(at, end, [](char byte) { return byte < 0; }) - bytes.data());
}

} // namespace

BadByteSearch::BadByteSearch(const KelString& encoding, std::uint32_t file, Places places, Take take)
    : decoder_(encoding), places_(places), take_(std::move(take)) {
    bad_.file = file;
}

void BadByteSearch::read(std::string_view block) {
    if (block.empty()) {
        decode(std::exchange(held_, {}), heldOffset_);
    }
    while (!block.empty()) {
        piece_ = block.substr(0, pieceSize - offset_ % pieceSize);
        block.remove_prefix(piece_.size());
        readPiece(piece_);
        if (places_ == Places::lines) {
            countLines(offset_ + piece_.size());
        }
        offset_ += piece_.size();
        piece_ = {};
        if (offset_ % pieceSize == 0) {
            endPiece();
        }
    }
}

// A line feed is never part of a longer character in the encodings of model files, so each line is decoded by itself.
void BadByteSearch::readPiece(std::string_view piece) {
    std::size_t passed = 0;
    if (!held_.empty()) {
        passed = std::min(piece.find('\n'), piece.size());
        held_ += piece.substr(0, passed);
        if (passed == piece.size()) {
            return;
        }
        decode(std::exchange(held_, {}), heldOffset_);
    }
    for (std::size_t odd = firstOdd(piece, passed); odd < piece.size(); odd = firstOdd(piece, passed)) {
        passed = piece.find('\n', odd);
        if (passed == std::string_view::npos) {
            held_ = piece.substr(odd);
            heldOffset_ = offset_ + odd;
            break;
        }
        decode(piece.substr(odd, passed - odd), offset_ + odd);
    }
    if (const std::size_t lineEnd = piece.rfind('\n'); lineEnd != std::string_view::npos) {
        lineOffset_ = offset_ + lineEnd + 1;
    }
}

// Ends a part of a line that is too long to be held.
void BadByteSearch::endPiece() {
    if (lineOffset_ + pieceSize <= offset_) {
        decode(std::exchange(held_, {}), heldOffset_);
        lineOffset_ = offset_;
    }
}

// Decodes a text without a line end.
void BadByteSearch::decode(std::string_view text, std::uint64_t offset) {
    if (text.empty()) {
        return;
    }
    for (const KelTextDecoder::Run& run : decoder_.badRuns(text)) {
        bad_.bytes = text.substr(run.offset, run.length);
        bad_.place.offset = offset + run.offset;
        if (places_ == Places::lines) {
            countLines(bad_.place.offset);
            bad_.place.line = line_;
            bad_.place.column = bad_.place.offset - lineBegin_ + 1;
        }
        take_(bad_);
    }
}

// Counts the lines up to an offset in the piece, unless they have been counted. What was held of earlier pieces has no
// line end.
void BadByteSearch::countLines(std::uint64_t end) {
    if (end <= counted_) {
        return;
    }
    const std::string_view bytes = piece_.substr(counted_ - offset_, end - counted_);
    line_ += countLineEnds(bytes);
    if (const std::size_t lineEnd = bytes.rfind('\n'); lineEnd != std::string_view::npos) {
        lineBegin_ = counted_ + lineEnd + 1;
    }
    counted_ = end;
}

void forEachBadBytes(const units::UnitTree& tree, const Choices& choices, const BadByteSearch::Take& take) {
    std::string block(pieceSize, '\0');
    for (std::size_t index = 0; index < tree.files.size(); ++index) {
        const units::ResolvedFile& file = tree.files[index];
        BadByteSearch search(encodingOf(file, choices), static_cast<std::uint32_t>(index), BadByteSearch::Places::lines,
                             take);
        units::OpenFile source(file.path);
        std::size_t count = 0;
        do {
            count = source.read(block.data(), block.size());
            search.read(std::string_view(block).substr(0, count));
        } while (count > 0);
    }
}

} // namespace ledger
