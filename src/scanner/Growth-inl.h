// Makes matches of the places where keywords start.

#if defined(SCANNER_GROWTH) == defined(HWY_TARGET_TOGGLE)
#ifdef SCANNER_GROWTH
#undef SCANNER_GROWTH
#else
#define SCANNER_GROWTH
#endif

#include "scanner/Block.h"
#include "scanner/ByteRuns-inl.h"
#include "scanner/Probe.h"
#include "scanner/Tails-inl.h"

HWY_BEFORE_NAMESPACE();
namespace rose::HWY_NAMESPACE {

/// A match around one keyword. Without an end there is none; an end at a limit that is not the input's decides nothing.
struct Growth {
    const char* begin = nullptr;
    const char* end = nullptr;
};

/// Where a match begins whose literal begins at `literal`; null when its lead is too short.
HWY_INLINE const char* leadBegin(const LeadRange& lead, const char* literal, const Window& window) {
    // Negative for a keyword that has been consumed: then so is the lead, which is too short for any pattern.
    const std::ptrdiff_t room = literal - window.begin;
    const std::ptrdiff_t length = blanksBefore(literal, lead.otherBlank, std::min(room, lead.maximum));
    return length < lead.minimum ? nullptr : literal - length;
}

/// For a literal that has not been compared to its end, one of two parts, or a tail that is no run.
HWY_NOINLINE inline Growth growUnusual(const Probe& probe, const char* word, const Window& window) {
    const Literal& literal = patterns[probe.pattern].literal;
    const char* const start = word - probe.prefixLength;
    const char* const begin = leadBegin(probe.lead, start, window);
    if (begin == nullptr || !std::string_view(start, window.limit - start).starts_with(literal.first)) {
        return {};
    }
    const char* text = word + probe.keywordLength;
    if (!literal.second.empty()) {
        text = secondPartEnd(literal.second, text, window);
        if (text == nullptr || (text == window.limit && !window.ended)) {
            return {begin, text};
        }
    }
    return {begin, tailEnd(probe, text, window)};
}

HWY_INLINE Growth grow(const Probe& probe, const char* word, const Window& window) {
    if (!probe.isUsual) {
        return growUnusual(probe, word, window);
    }
    const char* const begin = leadBegin(probe.lead, word - probe.prefixLength, window);
    if (begin == nullptr) {
        return {};
    }
    return {begin, runTailEnd(probe.run, word + probe.keywordLength, window)};
}

inline void growMatches(const PlaceList& places, std::size_t& next, const char* block, const Window& input,
                        MatchBatch& batch) {
    Window window = input;
    Match* match = batch.matches.data();
    const Match* const full = match + batch.matches.size();
    const Place* place = places.places.data() + next;
    const Place* const end = places.places.data() + places.count;
    batch.undecided = nullptr;
    for (; place != end && match != full && batch.undecided == nullptr; ++place) {
        const char* const word = block + place->offset;
        const Probe* probe = &probes[place->probe];
        for (const Probe* const last = probe + place->count; probe != last; ++probe) {
            const Growth growth = probe->isAt(word) ? grow(*probe, word, window) : Growth{};
            if (growth.end == nullptr) {
                continue;
            }
            if (growth.end == window.limit && !window.ended) {
                batch.undecided = growth.begin;
                --place; // to be dealt with again
                break;
            }
            *match++ = {growth.begin - block, growth.end - block, static_cast<std::uint16_t>(probe->pattern + 1),
                        static_cast<std::uint16_t>(place - places.places.data())};
            window.begin = growth.end;
            break;
        }
    }
    next = static_cast<std::size_t>(place - places.places.data());
    batch.count = static_cast<std::size_t>(match - batch.matches.data());
}

} // namespace rose::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
