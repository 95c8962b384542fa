#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace rose {

/// Finds the places of a text where a keyword may start: nearly every byte starts none, and telling so must cost next
/// to nothing. Works without branches on the text, so that its cost does not depend on what the text holds.
class KeywordFilter {
public:
    /// How many bytes one call looks at.
    static constexpr std::size_t blockSize = 4096;
    /// How far behind the block its bytes are looked at.
    static constexpr std::size_t overlap = 4;
    /// How far before the block a keyword reported with it may start.
    static constexpr std::size_t reach = 2;

    /// A place where the letters of a keyword's family stand.
    struct Place {
        std::int16_t offset;  ///< from the start of the block; -reach at the least
        std::uint16_t family; ///< index into `keywords::families`
    };

    /// Looks through the block of `size` bytes (at most `blockSize`, and even unless the text ends with it) at `text`.
    /// Of blocks in a row, one of them reports each place, and reports its places in order; a place before the first
    /// block may be left out. Reads up to `overlap` bytes behind the block and `reach` + 1 before it.
    void search(const char* text, std::size_t size);

    [[nodiscard]] const Place* begin() const { return places_.data(); }
    [[nodiscard]] const Place* end() const { return places_.data() + count_; }
    void clear() { count_ = 0; }

private:
    // Every second byte can be a hit; the last element is where a miss behind a full list is written.
    std::array<std::uint16_t, blockSize / 2 + 1> hits_;
    std::array<Place, blockSize / 2 + 1> places_;
    std::size_t count_ = 0;
};

} // namespace rose
