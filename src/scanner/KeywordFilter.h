#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace rose {

/// Finds the places of a text where a keyword may start: nearly every byte starts none, and telling so must cost next
/// to nothing. Works without branches on single bytes, so that its cost hardly depends on what the text holds.
class KeywordFilter {
public:
    /// How many bytes one call looks at.
    static constexpr std::size_t blockSize = 4096;
    /// How far before the block a keyword reported with it may start.
    static constexpr std::size_t reach = 2;
    /// How far behind the block bytes are loaded, whatever they are.
    static constexpr std::size_t overread = 136;

    /// A place where the letters of a keyword's family stand.
    struct Place {
        std::int16_t offset;  ///< from the start of the block; -reach at the least
        std::uint16_t family; ///< index into `keywords::families`
    };

    /// Looks through the block of `size` bytes at `text`, of at most `blockSize`. A keyword that starts in the block is
    /// reported, in order; one that starts in its last `reach` bytes may be left to the search of the block behind it,
    /// or be reported by both. PRECONDITION: the first bytes of a keyword that starts in the block are all there.
    void search(const char* text, std::size_t size);

    [[nodiscard]] const Place* begin() const { return places_.data(); }
    [[nodiscard]] const Place* end() const { return places_.data() + count_; }

private:
    // Lists of what is found so far. What is written behind their ends while nothing is found takes the spare elements.
    static constexpr std::size_t mostPlaces = blockSize / 2;
    std::array<std::uint16_t, mostPlaces + 4> hits_;
    std::array<Place, mostPlaces + 1> places_;
    std::size_t count_ = 0;
};

} // namespace rose
