#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Searches for the end of a run of bytes in buffered text, sixteen bytes at a time: most runs end within the first
/// sixteen, so a search seldom branches.
///
/// All of them require that the text ends with a NUL, at which they stop at the latest, and that `stride` bytes can be
/// read from that NUL on.
namespace notation::runs {

inline constexpr std::size_t stride = 16;

using Bytes [[gnu::vector_size(stride)]] = signed char;
using Unsigned [[gnu::vector_size(stride)]] = unsigned char;
using Flags = decltype(Bytes() == Bytes()); // all bits of a byte are alike

inline Bytes load(const char* text) {
    Bytes bytes;
    std::memcpy(&bytes, text, stride);
    return bytes;
}

/// Gathers the lowest bits of eight bytes, the lowest byte's in the lowest bit.
constexpr std::uint32_t gathered(std::uint64_t bytes) {
    return static_cast<std::uint32_t>(((bytes & 0x0101010101010101U) * 0x0102040810204080U) >> 56);
}
static_assert(gathered(0xFF) == 0x01 && gathered(0xFF0000FFFFFF0000U) == 0x9C && gathered(~std::uint64_t{0}) == 0xFF);

/// A bit for each byte, the first one's the lowest.
inline std::uint32_t bitsOf(Flags flags) {
#if defined(__SSE2__)
    return static_cast<std::uint32_t>(_mm_movemask_epi8(std::bit_cast<__m128i>(flags)));
#else
    std::uint64_t halves[2];
    std::memcpy(halves, &flags, stride);
    if constexpr (std::endian::native == std::endian::big) {
        halves[0] = __builtin_bswap64(halves[0]);
        halves[1] = __builtin_bswap64(halves[1]);
    }
    return gathered(halves[0]) | gathered(halves[1]) << 8;
#endif
}

template <class IsEnd>
const char* findEnd(const char* text, IsEnd isEnd) {
    for (;; text += stride) {
        if (const std::uint32_t ends = bitsOf(isEnd(load(text))); ends != 0) {
            return text + std::countr_zero(ends);
        }
    }
}

inline Flags areBlank(Bytes bytes) {
    return (bytes == ' ') | (bytes == '\t');
}

/// The first byte that is neither a space nor a tab.
inline const char* endOfBlanks(const char* text) {
    constexpr std::uint32_t all = (1U << stride) - 1;
    for (;; text += stride) {
        if (const std::uint32_t blanks = bitsOf(areBlank(load(text))); blanks != all) {
            return text + std::countr_zero(blanks ^ all);
        }
    }
}

inline Flags areDigits(Bytes bytes) {
    return std::bit_cast<Unsigned>(bytes) - '0' <= 9;
}

/// The first byte that is not a digit.
inline const char* endOfDigits(const char* text) {
    return findEnd(text, [](Bytes bytes) { return ~areDigits(bytes); });
}

/// The first byte that cannot be within a word, or a byte that is rare there: a sign, a byte beyond ASCII ...
inline const char* endOfLetters(const char* text) {
    return findEnd(text, [](Bytes bytes) { return (bytes < '0') | (bytes == '\x7F'); });
}

/// The first quote, backslash or control byte, tabs included.
inline const char* endOfQuoted(const char* text) {
    return findEnd(
        text, [](Bytes bytes) { return (bytes == '"') | (bytes == '\\') | (std::bit_cast<Unsigned>(bytes) < ' '); });
}

/// The first control byte, tabs included.
inline const char* endOfPrintable(const char* text) {
    return findEnd(text, [](Bytes bytes) { return std::bit_cast<Unsigned>(bytes) < ' '; });
}

} // namespace notation::runs
