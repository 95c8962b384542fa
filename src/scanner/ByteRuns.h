#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Searches for the ends of runs of bytes, eight bytes at a time. All of them may read up to seven bytes past the byte
/// they stop at; the input layer keeps margins around its text for that.
namespace rose::bytes {

inline constexpr std::uint64_t lowBits = 0x0101010101010101U;
inline constexpr std::uint64_t highBits = 0x8080808080808080U;

/// The four bytes at `text`, the first of them in the lowest bits.
inline std::uint32_t load32(const char* text) {
    std::uint32_t word;
    std::memcpy(&word, text, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        word = (word << 24) | ((word & 0xFF00U) << 8) | ((word >> 8) & 0xFF00U) | (word >> 24);
    }
    return word;
}

/// The eight bytes at `text`, the first of them in the lowest bits.
inline std::uint64_t load64(const char* text) {
    if constexpr (std::endian::native == std::endian::big) {
        return load32(text) | (static_cast<std::uint64_t>(load32(text + 4)) << 32);
    }
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

constexpr std::uint64_t repeated(char byte) { return lowBits * static_cast<unsigned char>(byte); }

/// The high bit of every zero byte of `word`, and nothing else.
constexpr std::uint64_t zeroBytes(std::uint64_t word) {
    return ~(((word & ~highBits) + ~highBits) | word | ~highBits);
}

/// As `zeroBytes` for the lowest zero byte; bits above it may be set wrongly.
constexpr std::uint64_t lowestZeroByte(std::uint64_t word) { return (word - lowBits) & ~word & highBits; }

constexpr bool isBlank(char byte) { return (byte == ' ') | (byte == '\t'); }

/// The first byte at or after `text` that is neither a space nor `otherBlank`.
inline const char* afterBlanks(const char* text, char otherBlank) {
    for (;; text += 8) {
        const std::uint64_t word = load64(text);
        const std::uint64_t blanks = zeroBytes(word ^ repeated(' ')) | zeroBytes(word ^ repeated(otherBlank));
        if (blanks != highBits) {
            return text + std::countr_zero(blanks ^ highBits) / 8;
        }
    }
}

/// How many of the bytes just before `text` are spaces or `otherBlank`, counting no further than `limit`.
inline std::ptrdiff_t blanksBefore(const char* text, char otherBlank, std::ptrdiff_t limit) {
    for (std::ptrdiff_t count = 0; count < limit; count += 8) {
        const std::uint64_t word = load64(text - count - 8);
        const std::uint64_t blanks = zeroBytes(word ^ repeated(' ')) | zeroBytes(word ^ repeated(otherBlank));
        if (blanks != highBits) {
            const std::ptrdiff_t found = count + std::countl_zero(blanks ^ highBits) / 8;
            return found < limit ? found : limit;
        }
    }
    return limit;
}

/// The first byte of [`text`, `end`) that is one of the three stops; `end` when there is none.
inline const char* firstStop(const char* text, const char* end, char stop1, char stop2, char stop3) {
    for (; text < end; text += 8) {
        const std::uint64_t word = load64(text);
        const std::uint64_t stops = lowestZeroByte(word ^ repeated(stop1)) | lowestZeroByte(word ^ repeated(stop2)) |
                                    lowestZeroByte(word ^ repeated(stop3));
        if (stops != 0) {
            text += std::countr_zero(stops) / 8;
            return text < end ? text : end;
        }
    }
    return end;
}

} // namespace rose::bytes
