// Makes matches of the places where keywords start.

#if defined(SCANNER_GROWTH) == defined(HWY_TARGET_TOGGLE)
#ifdef SCANNER_GROWTH
#undef SCANNER_GROWTH
#else
#define SCANNER_GROWTH
#endif

#include "scanner/ByteRuns-inl.h"
#include "scanner/Probe.h"
#include "scanner/VectorCode.h"

#include <string_view>

HWY_BEFORE_NAMESPACE();
namespace rose::HWY_NAMESPACE {

// The tail of a match. A result of `window.limit` while the input continues after it decides nothing: more text is
// needed. Null means that the text is not such a tail.

/// The result of a search that reached the window's limit before it was decided.
HWY_INLINE const char* unfinished(const Window& window) {
    return window.ended ? nullptr : window.limit;
}

/// The rest of a run, of which nothing has been found yet.
HWY_NOINLINE inline const char* longRunEnd(const TailRun& run, const char* text, const Window& window) {
    return firstOf(text, window.limit, '"', '\n', run.otherStop);
}

/// The tail that nearly all patterns have: blanks, an optional quote, and a run up to a stop.
HWY_INLINE const char* runTailEnd(const TailRun& run, const char* text, const Window& window) {
    // Nearly every such tail ends within the first bytes. The byte at the limit is NUL, which is not a blank.
    constexpr std::size_t atFirst = std::max<std::size_t>(32, hn::MaxLanes(hn::CappedTag<std::uint8_t, 64>()));
    const std::uint64_t blanks = bitsOfBytes<atFirst>(text, ' ', run.otherBlank);
    const std::uint64_t stops = bitsOfBytes<atFirst>(text, '"', '\n', run.otherStop);
    if ((blanks & 1U) == 0 && run.needsBlank) {
        return nullptr; // the byte after a keyword is always there, unless the input ends
    }
    const auto blankCount = static_cast<std::size_t>(std::countr_one(blanks));
    if (blankCount < atFirst) {
        const std::size_t skipped = blankCount + (text[blankCount] == '"' ? 1 : 0);
        const std::uint64_t found = skipped < atFirst ? stops >> skipped << skipped : 0;
        if (found != 0) {
            return std::min(text + std::countr_zero(found), window.limit);
        }
        return longRunEnd(run, text + std::max(skipped, atFirst), window);
    }
    const char* const start = afterBlanks(text + atFirst, run.otherBlank);
    return longRunEnd(run, start + (*start == '"' ? 1 : 0), window);
}

HWY_NOINLINE inline const char* viewTailEnd(const char* text, const Window& window) {
    const char* const kindStart = afterBlanks(text, '\t');
    if (kindStart == window.limit) {
        return unfinished(window);
    }
    if (kindStart == text || *kindStart != '"') {
        return nullptr;
    }
    const char* const kindEnd = firstOf(kindStart + 1, window.limit, '"');
    if (kindEnd == window.limit) {
        return unfinished(window);
    }
    const char* const nameStart = afterBlanks(kindEnd + 1, '\t');
    if (nameStart == kindEnd + 1) {
        return nameStart < window.limit ? nullptr : unfinished(window);
    }
    const char* const nameEnd = firstOf(nameStart + 1, window.limit, '"');
    return nameEnd < window.limit ? firstOf(nameEnd + 1, window.limit, '\n') : nameEnd;
}

/// Any tail.
HWY_INLINE const char* tailEnd(const Probe& probe, const char* text, const Window& window) {
    switch (patterns[probe.pattern].tail) {
    case Tail::noTail:
        return text;
    case Tail::lineTail:
        return firstOf(text, window.limit, '\n');
    case Tail::viewTail:
        return viewTailEnd(text, window);
    default:
        return runTailEnd(probe.run, text, window);
    }
}

/// Where the second part of a literal ends, with the optional blanks before it.
HWY_NOINLINE inline const char* secondPartEnd(std::string_view secondPart, const char* text, const Window& window) {
    const char* const start = afterBlanks(text, '\t');
    const std::size_t length = secondPart.size();
    if (static_cast<std::size_t>(window.limit - start) < length) {
        return unfinished(window);
    }
    return std::string_view(start, length) == secondPart ? start + length : nullptr;
}

// The match around a keyword.

/// A match around one keyword; none without an end. An end at a limit that is not the end of the input decides nothing.
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

/// For a literal that has not been compared to its end, one of two parts, or a tail that is not a run.
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
                --place; // to be examined again
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
