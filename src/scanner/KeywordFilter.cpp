#include "scanner/KeywordFilter.h"

#include "scanner/ByteRuns.h"
#include "scanner/Keywords.h"

#include <algorithm>
#include <utility>

namespace rose {

namespace {

using keywords::families;
using keywords::Family;

// The first pass loads three bytes at every second place and looks them up by a hash. A keyword starts either at such
// a place or at the byte before it; so it is found by its first three letters, or by letters 2 to 4.
constexpr int tripleBits = 13;
// A multiple of 2^11, so that of four bytes loaded at once the fourth does not count, and of the third only five bits
// do; that keeps the entries few where the byte behind a three-letter keyword may be any. Chosen among many for few
// false hits in ordinary model text.
constexpr std::uint32_t tripleFactor = 0x8250B800U;

constexpr std::size_t tripleSlot(std::uint32_t bytes) {
    return (bytes * tripleFactor) >> (32 - tripleBits);
}

/// Up to eight bytes as a load gives them.
constexpr std::uint64_t packed(std::string_view bytes) {
    std::uint64_t word = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        word |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[index])) << (8 * index);
    }
    return word;
}

/// 0 where no keyword is near; otherwise 1 plus the distance back to the keyword's first letter.
using TripleTable = std::array<std::uint8_t, std::size_t{1} << tripleBits>;

/// Enters `triple` at `distance` unless another distance holds its slot.
consteval bool enter(TripleTable& table, std::uint64_t triple, std::uint8_t distance) {
    std::uint8_t& slot = table[tripleSlot(static_cast<std::uint32_t>(triple))];
    const auto value = static_cast<std::uint8_t>(distance + 1);
    if (slot != 0 && slot != value) {
        return false;
    }
    slot = value;
    return true;
}

consteval TripleTable makeTripleTable() {
    TripleTable table{};
    for (const Pattern& pattern : patterns) {
        const std::string_view word = keywords::keyword(pattern);
        const std::uint32_t choices = word.size() > 3 ? 1 : 256; // for the byte behind a three-letter keyword
        for (std::uint64_t any = 0; any < choices; ++any) {
            enter(table, packed(word.substr(1, 3)) | (any << 16), 1);
        }
    }
    for (const Pattern& pattern : patterns) {
        const std::string_view word = keywords::keyword(pattern);
        // Letters that are another keyword's letters 2 to 4 leave the distance open; then letters 3 to 5 stand in.
        if (!enter(table, packed(word.substr(0, 3)), 0) &&
            (word.size() < 5 || !enter(table, packed(word.substr(2, 3)), 2))) {
            throw "another factor is needed: a keyword has no triple of its own";
        }
    }
    return table;
}

constexpr TripleTable triples = makeTripleTable();

// The second pass compares the letters of the family, which is found by the first three.
constexpr int startBits = 8;

/// The fourth byte does not count: only factors that are multiples of 2^8 are used.
constexpr std::size_t startSlot(std::uint64_t bytes, std::uint32_t factor) {
    return (static_cast<std::uint32_t>(bytes) * factor) >> (32 - startBits);
}

/// A factor with which no two families share a slot.
consteval std::uint32_t findStartFactor() {
    for (std::uint32_t factor = 0x9E3779B1U;; factor = factor * 1664525U + 1013904223U) {
        std::array<bool, std::size_t{1} << startBits> taken{};
        const bool fits = std::all_of(families.begin(), families.end(), [&](const Family& family) {
            return !std::exchange(taken[startSlot(packed(family.start), factor & ~0xFFU)], true);
        });
        if (fits) {
            return factor & ~0xFFU;
        }
    }
}

constexpr std::uint32_t startFactor = findStartFactor();

struct FamilyStart {
    std::uint64_t letters = 1; // an empty slot matches no text: its letters are not 0, but its mask is
    std::uint64_t mask = 0;
    std::uint16_t family = 0;
    bool anywhere = false; // needs no blank before it
};

constexpr auto familyStarts = [] {
    std::array<FamilyStart, std::size_t{1} << startBits> starts{};
    for (std::size_t index = 0; index < families.size(); ++index) {
        const Family& family = families[index];
        const std::size_t bits = 8 * family.start.size();
        starts[startSlot(packed(family.start), startFactor)] = {packed(family.start), ~std::uint64_t{0} >> (64 - bits),
                                                                static_cast<std::uint16_t>(index),
                                                                !family.followsBlank};
    }
    return starts;
}();

/// 1 where a keyword may be near, 0 elsewhere: what the first pass needs of `triples`.
constexpr TripleTable tripleHits = [] {
    TripleTable hits{};
    for (std::size_t slot = 0; slot < hits.size(); ++slot) {
        hits[slot] = triples[slot] != 0 ? 1 : 0;
    }
    return hits;
}();

// The first pass goes by groups of as many places as a word has bits.
constexpr std::size_t placesPerGroup = 64;
constexpr std::size_t groupSize = 2 * placesPerGroup;
constexpr std::uint64_t lastPlace = std::uint64_t{1} << (placesPerGroup - 1);

/// Which places of a group are hits, the first of them in the lowest bit.
std::uint64_t hitsOfGroup(const char* text) {
    std::uint64_t hits = 0;
    const auto add = [&](std::size_t place) {
        hits = 2 * hits + tripleHits[tripleSlot(bytes::load32(text + 2 * place))];
    };
    [&]<std::size_t... Index>(std::index_sequence<Index...>) {
        (add(placesPerGroup - 1 - Index), ...); // no loop, whose own steps would be a good part of the whole
    }
    (std::make_index_sequence<placesPerGroup>{});
    return hits;
}

} // namespace

void KeywordFilter::search(const char* text, std::size_t size) {
    std::size_t hitCount = 0;
    for (std::size_t group = 0; group < size; group += groupSize) {
        std::uint64_t hits = hitsOfGroup(text + group);
        const std::size_t left = (size - group + 1) / 2;
        if (left < placesPerGroup) {
            hits &= (std::uint64_t{1} << left) - 1;
        }
        // How many hits there are is hard to foresee: four at a time are written, whether or not there are as many.
        do {
            for (int step = 0; step < 4; ++step) {
                hits_[hitCount] = static_cast<std::uint16_t>(
                    group + 2 * static_cast<std::size_t>(std::countr_zero(hits | lastPlace)));
                hitCount += hits != 0 ? 1 : 0;
                hits &= hits - 1;
            }
        } while (hits != 0);
    }
    std::size_t count = 0;
    for (std::size_t index = 0; index < hitCount; ++index) {
        const std::int32_t hit = hits_[index];
        const std::int32_t start = hit + 1 - triples[tripleSlot(bytes::load32(text + hit))];
        const std::uint64_t letters = bytes::load64(text + start);
        const FamilyStart& family = familyStarts[startSlot(letters, startFactor)];
        places_[count] = {static_cast<std::int16_t>(start), family.family};
        const bool found =
            ((letters & family.mask) == family.letters) & (family.anywhere | bytes::isBlank(text[start - 1]));
        count += found ? 1 : 0;
    }
    count_ = count;
}

} // namespace rose
