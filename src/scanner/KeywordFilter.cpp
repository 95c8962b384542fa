#include "scanner/KeywordFilter.h"

#include "scanner/ByteRuns.h"
#include "scanner/Keywords.h"

namespace rose {

namespace {

using keywords::Family;
using keywords::families;

// The first pass loads three bytes at every second place and looks them up by a hash. A keyword starts either at such
// a place or at the byte before it; so it is found by its first three letters, or by letters 2 to 4. Of the third byte
// only five bits count, which keeps the entries few where the byte behind a three-letter keyword may be any.
constexpr std::uint32_t tripleMask = 0x1FFFFFU;
constexpr int tripleBits = 13;
// Chosen among many for few false hits in ordinary model text.
constexpr std::uint32_t tripleFactor = 0x0C85CFC3U;

constexpr std::size_t tripleSlot(std::uint32_t bytes) {
    return ((bytes & tripleMask) * tripleFactor) >> (32 - tripleBits);
}

constexpr std::uint32_t packed(std::string_view bytes) {
    std::uint32_t word = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        word |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[index])) << (8 * index);
    }
    return word;
}

/// 0 where no keyword is near; otherwise 1 plus the distance back to the keyword's first letter.
using TripleTable = std::array<std::uint8_t, std::size_t{1} << tripleBits>;

/// Enters `triple` at `distance` unless another distance holds its slot.
consteval bool enter(TripleTable& table, std::uint32_t triple, std::uint8_t distance) {
    std::uint8_t& slot = table[tripleSlot(triple)];
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
        for (std::uint32_t any = 0; any < choices; ++any) {
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

// The second pass compares the family's letters. Families differ in their first three.
constexpr std::uint32_t startMask = 0xFFFFFFU;
constexpr int startBits = 8;

constexpr std::size_t startSlot(std::uint32_t bytes, std::uint32_t factor) {
    return ((bytes & startMask) * factor) >> (32 - startBits);
}

/// A factor with which no two families share a slot.
consteval std::uint32_t findStartFactor() {
    for (std::uint32_t factor = 0x9E3779B1U;; factor = factor * 1664525U + 1013904222U) {
        std::array<bool, std::size_t{1} << startBits> taken{};
        bool clash = false;
        for (const Family& family : families) {
            bool& slot = taken[startSlot(packed(family.start), factor)];
            clash = clash || slot;
            slot = true;
        }
        if (!clash) {
            return factor;
        }
    }
}

constexpr std::uint32_t startFactor = findStartFactor();

struct FamilyStart {
    std::uint32_t letters = 0;
    std::uint32_t mask = 0; // an empty slot matches no text: its mask is 0 and its letters are not
    std::uint8_t family = 0;
    bool anywhere = false; // needs no blank before it
};

constexpr auto familyStarts = [] {
    std::array<FamilyStart, std::size_t{1} << startBits> starts{};
    for (FamilyStart& start : starts) {
        start.letters = 1;
    }
    for (std::size_t index = 0; index < families.size(); ++index) {
        const Family& family = families[index];
        starts[startSlot(packed(family.start), startFactor)] = {
            packed(family.start), startMask, static_cast<std::uint8_t>(index), !family.followsBlank};
    }
    return starts;
}();

} // namespace

void KeywordFilter::search(const char* text, std::size_t size) {
    std::size_t hitCount = 0;
    for (std::size_t place = 0; place < size; place += 2) {
        hits_[hitCount] = static_cast<std::uint16_t>(place);
        hitCount += triples[tripleSlot(bytes::load32(text + place))] != 0 ? 1 : 0;
    }
    std::size_t count = 0;
    for (std::size_t index = 0; index < hitCount; ++index) {
        const std::int32_t hit = hits_[index];
        const std::int32_t start = hit + 1 - triples[tripleSlot(bytes::load32(text + hit))];
        const std::uint32_t letters = bytes::load32(text + start);
        const FamilyStart& family = familyStarts[startSlot(letters, startFactor)];
        places_[count] = {static_cast<std::int16_t>(start), family.family};
        const bool found = ((letters & family.mask) == family.letters) &
                           (family.anywhere | bytes::isBlank(text[start - 1]));
        count += found ? 1 : 0;
    }
    count_ = count;
}

} // namespace rose
