// Searches of runs of bytes with one set of vector instructions.

#if defined(SCANNER_BYTE_RUNS) == defined(HWY_TARGET_TOGGLE)
#ifdef SCANNER_BYTE_RUNS
#undef SCANNER_BYTE_RUNS
#else
#define SCANNER_BYTE_RUNS
#endif

#include "scanner/Bytes.h"

#include <hwy/highway.h>

#include <algorithm>
#include <array>
#include <bit>

HWY_BEFORE_NAMESPACE();
namespace rose::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// A bit for every byte of a vector that is set in `mask`, the first one's the lowest.
template <class Bytes>
HWY_INLINE std::uint64_t bitsOf(Bytes bytes, hn::Mask<Bytes> mask) {
#if HWY_TARGET == HWY_SCALAR
    return hn::AllTrue(bytes, mask) ? 1 : 0; // a vector is one byte
#else
    std::array<char, 8> bits{};
    hn::StoreMaskBits(bytes, mask, reinterpret_cast<std::uint8_t*>(bits.data()));
    return rose::bytes::load64(bits.data());
#endif
}

/// Which bytes of `text` are `wanted` or one of the `others`.
template <class Bytes, class... Other>
HWY_INLINE auto anyOf(Bytes bytes, hn::Vec<Bytes> text, char wanted, Other... others) {
    const auto found = hn::Eq(text, hn::Set(bytes, static_cast<std::uint8_t>(wanted)));
    if constexpr (sizeof...(Other) == 0) {
        return found;
    } else {
        return hn::Or(found, anyOf(bytes, text, others...));
    }
}

/// A bit for each of the `count` bytes at `text`, of at most 64, that is one of those wanted, the first byte's the
/// lowest.
template <std::size_t count, class... Byte>
HWY_INLINE std::uint64_t bitsOfBytes(const char* text, Byte... wanted) {
    const hn::CappedTag<std::uint8_t, count> bytes;
    std::uint64_t bits = 0;
    for (std::size_t at = 0; at < count; at += hn::Lanes(bytes)) {
        const auto vector = hn::LoadU(bytes, reinterpret_cast<const std::uint8_t*>(text + at));
        bits |= bitsOf(bytes, anyOf(bytes, vector, wanted...)) << at;
    }
    return bits;
}

/// The first byte at or after `text` that is neither a space nor `otherBlank`. PRECONDITION: there is one.
HWY_NOINLINE inline const char* afterBlanks(const char* text, char otherBlank) {
    for (;; text += 64) {
        if (const std::uint64_t others = ~bitsOfBytes<64>(text, ' ', otherBlank); others != 0) {
            return text + std::countr_zero(others);
        }
    }
}

/// How many of the bytes just before `text` are spaces or `otherBlank`, counting no further than `limit`;
/// `limit` itself when that is negative.
HWY_INLINE std::ptrdiff_t blanksBefore(const char* text, char otherBlank, std::ptrdiff_t limit) {
    for (std::ptrdiff_t count = 0;; count += 32) {
        const auto others = ~static_cast<std::uint32_t>(bitsOfBytes<32>(text - count - 32, ' ', otherBlank));
        if (others != 0 || count + 32 >= limit) {
            return std::min<std::ptrdiff_t>(count + std::countl_zero(others), limit);
        }
    }
}

/// The first of the bytes `wanted` in [`text`, `end`); `end` when there is none.
template <class... Byte>
HWY_INLINE const char* firstOf(const char* text, const char* end, Byte... wanted) {
    for (; text < end; text += 64) {
        if (const std::uint64_t found = bitsOfBytes<64>(text, wanted...); found != 0) {
            return std::min(text + std::countr_zero(found), end);
        }
    }
    return end;
}

} // namespace rose::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
