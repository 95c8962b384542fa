#pragma once

#include <algorithm>
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

constexpr std::uint64_t repeated(char byte) {
    return lowBits * static_cast<unsigned char>(byte);
}

/// The high bit of every byte of `word` that is not zero, and nothing else.
constexpr std::uint64_t nonzeroBytes(std::uint64_t word) {
    return (((word & ~highBits) + ~highBits) | word) & highBits;
}

/// The high bit of every zero byte of `word`, and perhaps of bytes above the lowest of them.
constexpr std::uint64_t zeroBytes(std::uint64_t word) {
    return (word - lowBits) & ~word & highBits;
}

constexpr bool isBlank(char byte) {
    return (byte == ' ') | (byte == '\t');
}

/// The high bit of every byte of `word` that is neither a space nor `otherBlank`.
constexpr std::uint64_t nonBlanks(std::uint64_t word, char otherBlank) {
    return nonzeroBytes(word ^ repeated(' ')) & nonzeroBytes(word ^ repeated(otherBlank));
}

/// The first byte at or after `text` that is neither a space nor `otherBlank`. There must be one.
inline const char* afterBlanks(const char* text, char otherBlank) {
    for (;; text += 8) {
        if (const std::uint64_t others = nonBlanks(load64(text), otherBlank); others != 0) {
            return text + std::countr_zero(others) / 8;
        }
    }
}

/// How many of the bytes just before `text` are spaces or `otherBlank`, counting no further than `limit`;
/// `limit` itself when that is negative.
inline std::ptrdiff_t blanksBefore(const char* text, char otherBlank, std::ptrdiff_t limit) {
    for (std::ptrdiff_t count = 0; count < limit; count += 8) {
        if (const std::uint64_t others = nonBlanks(load64(text - count - 8), otherBlank); others != 0) {
            return std::min<std::ptrdiff_t>(count + std::countl_zero(others) / 8, limit);
        }
    }
    return limit;
}

/// The first double quote, newline or `Other` in [`text`, `end`); `end` when there is none.
template <char... Other>
const char* firstStop(const char* text, const char* end) {
    // The first two, and few other bytes, become the same byte when the bits in which they differ are masked out.
    constexpr char mask = ~('"' ^ '\n');
    for (; text < end; text += 8) {
        const std::uint64_t word = load64(text);
        std::uint64_t stops = zeroBytes((word & repeated(mask)) ^ repeated('"' & '\n'));
        stops |= (std::uint64_t{0} | ... | zeroBytes(word ^ repeated(Other)));
        for (; stops != 0; stops &= stops - 1) {
            const char* const stop = text + std::countr_zero(stops) / 8;
            if (*stop == '"' || *stop == '\n' || (false || ... || (*stop == Other))) {
                return stop < end ? stop : end;
            }
        }
    }
    return end;
}

/// The first `byte` in [`text`, `end`); `end` when there is none.
inline const char* first(char byte, const char* text, const char* end) {
    const void* const found = std::memchr(text, byte, static_cast<std::size_t>(end - text));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

} // namespace rose::bytes
