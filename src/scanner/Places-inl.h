// Finds the places where keywords start.

#if defined(SCANNER_PLACES) == defined(HWY_TARGET_TOGGLE)
#ifdef SCANNER_PLACES
#undef SCANNER_PLACES
#else
#define SCANNER_PLACES
#endif

#include "scanner/ByteRuns-inl.h"
#include "scanner/Fingerprints.h"
#include "scanner/Keywords.h"
#include "scanner/VectorCode.h"

HWY_BEFORE_NAMESPACE();
namespace rose::HWY_NAMESPACE {

/// How many bytes are looked at in one go: a word has a bit for each.
inline constexpr std::size_t stride = 64;

/// The groups of fingerprints that have a byte of `text` in the letter of `tables`.
template <class Bytes>
HWY_INLINE hn::Vec<Bytes> groupsOf(Bytes bytes, hn::Vec<Bytes> text, const fingerprints::LetterTables& tables) {
#if HWY_TARGET == HWY_SCALAR
    const std::uint8_t byte = hn::GetLane(text);
    return hn::Set(bytes, static_cast<std::uint8_t>(tables.lower[byte & 15U] & tables.upper[byte >> 4U]));
#else
    const auto lower = hn::Load(bytes, tables.lower.data());
    const auto upper = hn::Load(bytes, tables.upper.data());
    return hn::And(hn::TableLookupBytes(lower, hn::And(text, hn::Set(bytes, 0x0F))),
                   hn::TableLookupBytes(upper, hn::ShiftRight<4>(text)));
#endif
}

/// A bit for each of the `stride` bytes at `text` where a fingerprint matches.
HWY_INLINE std::uint64_t candidates(const char* text) {
    const hn::CappedTag<std::uint8_t, stride> bytes;
    const auto load = [&](const char* from)
                          HWY_ATTR { return hn::LoadU(bytes, reinterpret_cast<const std::uint8_t*>(from)); };
    std::uint64_t bits = 0;
    for (std::size_t at = 0; at < stride; at += hn::Lanes(bytes)) {
        const auto before = hn::And(load(text + at - 1), hn::Set(bytes, rose::bytes::blankMask));
        const auto blanks = hn::Eq(before, hn::Set(bytes, rose::bytes::blankBits));
        auto groups = hn::Or(hn::VecFromMask(bytes, blanks), hn::Set(bytes, fingerprints::groupsAnywhere));
        for (std::size_t letter = 0; letter < fingerprints::letterCount; ++letter) {
            groups = hn::And(groups, groupsOf(bytes, load(text + at + letter), fingerprints::letterTables[letter]));
        }
        bits |= bitsOf(bytes, hn::Eq(groups, hn::Zero(bytes))) << at;
    }
    return ~bits;
}

inline void findPlaces(const char* text, std::size_t size, PlaceList& list) {
    // How many candidates there are is hard to foresee: so many at a time are written, whether or not they exist.
    constexpr std::size_t writtenAtOnce = 4;
    constexpr std::uint64_t lastBit = std::uint64_t{1} << (stride - 1);
    std::array<std::uint16_t, blockSize + writtenAtOnce> offsets;
    std::size_t offsetCount = 0;
    for (std::size_t from = 0; from < size; from += stride) {
        std::uint64_t bits = candidates(text + from);
        if (size - from < stride) {
            bits &= (std::uint64_t{1} << (size - from)) - 1;
        }
        std::uint16_t* offset = &offsets[offsetCount];
        offsetCount += static_cast<std::size_t>(std::popcount(bits));
        do {
            for (std::size_t count = 0; count < writtenAtOnce; ++count, bits &= bits - 1) {
                // With a bit that is always there, for none of them is not worth a branch.
                const int first = std::countr_zero(bits | lastBit);
                *offset++ = static_cast<std::uint16_t>(from + static_cast<std::size_t>(first));
            }
        } while (bits != 0);
    }
    std::size_t count = 0;
    for (std::size_t index = 0; index < offsetCount; ++index) {
        const std::uint64_t bytes = rose::bytes::load64(text + offsets[index] - 1);
        const FamilyEntry& family = familyEntry(bytes);
        list.places[count] = {offsets[index], family.probe, family.count};
        count += family.matches(bytes) ? 1 : 0;
    }
    list.count = count;
}

} // namespace rose::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
