#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace rose::bytes {

/// The eight bytes at `text`, the first of them in the lowest bits.
inline std::uint64_t load64(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        word = __builtin_bswap64(word);
    }
    return word;
}

/// Bytes as `load64` returns them, from byte number `shift`. PRECONDITION: they end within eight bytes.
constexpr std::uint64_t packed(std::string_view bytes, std::size_t shift) {
    std::uint64_t word = 0;
    for (const char byte : bytes) {
        word |= std::uint64_t{static_cast<unsigned char>(byte)} << (8 * shift++);
    }
    return word;
}

/// All bits of `count` bytes from the byte numbered `shift` on.
constexpr std::uint64_t packedMask(std::size_t count, std::size_t shift) {
    return count == 0 ? 0 : ~std::uint64_t{0} >> (64 - 8 * count) << (8 * shift);
}

/// A byte that passes for a blank has `blankBits` in the bits of `blankMask`: besides blanks those are \0, \1, \b, "!",
/// "(" and ")".
inline constexpr unsigned char blankBits = ' ' & '\t';
inline constexpr unsigned char blankMask = static_cast<unsigned char>(~(' ' ^ '\t'));

constexpr bool isBlank(char byte) {
    return (byte == ' ') | (byte == '\t');
}

} // namespace rose::bytes
