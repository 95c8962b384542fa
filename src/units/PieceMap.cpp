#include "units/PieceMap.h"

#include <algorithm>

namespace units {

void PieceMap::add(Piece piece) {
    if (piece.length == 0) {
        return;
    }
    piece.begin = getLength();
    if (!pieces_.empty()) {
        Piece& last = pieces_.back();
        if (last.isCopied && piece.isCopied && last.file == piece.file && last.offset + last.length == piece.offset) {
            last.length += piece.length;
            last.fileLength += piece.length;
            return;
        }
    }
    if (piece.fileLength > 0) {
        byFile_.resize(std::max(byFile_.size(), piece.file + 1));
        byFile_[piece.file].push_back(static_cast<std::uint32_t>(pieces_.size()));
    }
    pieces_.push_back(piece);
}

const Piece& PieceMap::find(std::uint64_t offset) const {
    return *(std::ranges::upper_bound(pieces_.begin() + 1, pieces_.end(), offset, {}, &Piece::begin) - 1);
}

PieceMap::FilePlace PieceMap::toFile(std::uint64_t offset) const {
    const Piece& piece = find(offset);
    const std::uint64_t last = piece.fileLength > 0 && !piece.isCopied ? piece.fileLength - 1 : piece.fileLength;
    return {piece.file, piece.offset + std::min(offset - piece.begin, last)};
}

std::optional<std::uint64_t> PieceMap::toText(std::size_t file, std::uint64_t offset) const {
    if (file >= byFile_.size()) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t>& indices = byFile_[file];
    const auto next =
        std::ranges::upper_bound(indices, offset, {}, [&](std::uint32_t at) { return pieces_[at].offset; });
    if (next == indices.begin()) {
        return std::nullopt;
    }
    const Piece& piece = pieces_[*(next - 1)];
    const std::uint64_t behind = offset - piece.offset;
    return behind < piece.fileLength ? std::optional(piece.begin + std::min(behind, piece.length - 1)) : std::nullopt;
}

} // namespace units
