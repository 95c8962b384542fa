#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace units {

/// A run of bytes of an assembled text that comes from one place of one file.
struct Piece {
    std::uint64_t begin = 0;  ///< its offset in the text
    std::uint64_t length = 0; ///< in the text; never 0
    std::size_t file = 0;     ///< in `UnitTree::files`
    std::uint64_t offset = 0; ///< in that file: of the first byte it was made from or, without any, where it was put
    std::uint64_t fileLength = 0; ///< how many bytes of the file it was made from; 0 for text that was put in
    bool isCopied = false;        ///< byte for byte: `length` is `fileLength`. Otherwise put in, replaced or converted
};

/// Where each byte of an assembled text comes from.
///
/// The pieces are in the order of the text, adjacent, and cover it. The bytes of one file stand in the text in the
/// file's order, each at most once. Lookups take logarithmic time; reading from several threads is safe.
class PieceMap {
public:
    struct FilePlace {
        std::size_t file = 0;
        std::uint64_t offset = 0;
        bool operator==(const FilePlace&) const = default;
    };

    /// Adds a run to the end of the text. One that goes on where the last one ended, in the text and in the file,
    /// becomes part of it. `begin` is set; the run of a file must not precede one that was added before. Does nothing
    /// without a length. May throw `std::bad_alloc`.
    void add(Piece piece);

    [[nodiscard]] std::span<const Piece> getPieces() const { return pieces_; }
    /// How long the text is.
    [[nodiscard]] std::uint64_t getLength() const {
        return pieces_.empty() ? 0 : pieces_.back().begin + pieces_.back().length;
    }

    /// The piece that the byte at an offset of the text is in; of an offset behind the text the last one. There must be
    /// a piece.
    [[nodiscard]] const Piece& find(std::uint64_t offset) const;
    /// Where in the files the byte at an offset of the text comes from. It is exact within a copied piece, and for the
    /// first byte of any other; further bytes of such a piece lead to some byte that it was made from, and those of
    /// text that was put in to where it was put. An offset that ends a range should be mapped as that of its last byte,
    /// plus one: the next piece may come from elsewhere.
    [[nodiscard]] FilePlace toFile(std::uint64_t offset) const;
    /// Where in the text the byte at an offset of a file is, as exact as `toFile`; nothing when the text lacks it.
    [[nodiscard]] std::optional<std::uint64_t> toText(std::size_t file, std::uint64_t offset) const;

private:
    std::vector<Piece> pieces_;
    std::vector<std::vector<std::uint32_t>> byFile_; // the pieces made from bytes of each file, in order
};

} // namespace units
