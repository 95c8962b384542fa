#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace units {

/// A run of bytes of an assembled text that comes from one place in one file.
struct Piece {
    std::uint64_t begin = 0;      ///< its offset in the text
    std::uint64_t length = 0;     ///< in the text; never 0
    std::size_t file = 0;         ///< in `UnitTree::files`
    std::uint64_t offset = 0;     ///< in that file, of the first byte it was made from; for inserted text, of its place
    std::uint64_t fileLength = 0; ///< the number of bytes of the file it was made from; 0 for inserted text
    bool isCopied = false;        ///< unchanged: `length` is `fileLength`. Otherwise inserted, replaced or converted
};

/// The origin of each byte of an assembled text.
///
/// The pieces are in the order of the text, adjacent, and cover it. The bytes of one file occur in the text in the
/// file's order, each at most once. Lookups take logarithmic time; reading from several threads is safe.
class PieceMap {
public:
    struct FilePlace {
        std::size_t file = 0;
        std::uint64_t offset = 0;
        bool operator==(const FilePlace&) const = default;
    };

    /// Appends a run to the text and sets its `begin`. A copied run that continues the last piece, also in the file, is
    /// merged into it; an empty run is ignored. The runs of a file must be added in the file's order. May throw
    /// `std::bad_alloc`.
    void add(Piece piece);

    [[nodiscard]] std::span<const Piece> getPieces() const { return pieces_; }
    /// The length of the text.
    [[nodiscard]] std::uint64_t getLength() const {
        return pieces_.empty() ? 0 : pieces_.back().begin + pieces_.back().length;
    }

    /// The piece with the byte at an offset of the text; for an offset after the text, the last piece. Requires that
    /// there is a piece.
    [[nodiscard]] const Piece& find(std::uint64_t offset) const;
    /// The origin of the byte at an offset of the text. It is exact in copied pieces, and for the first byte of any
    /// other piece. Further bytes of such a piece map to some byte that the piece was made from, and those of inserted
    /// text to its place. To map the end of a range, map its last byte and add one: the next piece may have another
    /// origin.
    [[nodiscard]] FilePlace toFile(std::uint64_t offset) const;
    /// The offset in the text of the byte at an offset of a file, as exact as `toFile`; nothing if the text lacks it.
    [[nodiscard]] std::optional<std::uint64_t> toText(std::size_t file, std::uint64_t offset) const;

private:
    std::vector<Piece> pieces_;
    std::vector<std::vector<std::uint32_t>> byFile_; // the pieces made from bytes of each file, in order
};

} // namespace units
