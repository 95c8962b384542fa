// Where the tail of a match ends. A result of `window.limit` while the input goes on behind it decides nothing: more
// text is needed. Null says that the text is no such tail.

#if defined(SCANNER_TAILS) == defined(HWY_TARGET_TOGGLE)
#ifdef SCANNER_TAILS
#undef SCANNER_TAILS
#else
#define SCANNER_TAILS
#endif

#include "scanner/Block.h"
#include "scanner/ByteRuns-inl.h"
#include "scanner/Probe.h"

#include <string_view>

HWY_BEFORE_NAMESPACE();
namespace rose::HWY_NAMESPACE {

/// What a search says that came to the window's limit before it had all it needs.
HWY_INLINE const char* unfinished(const Window& window) {
    return window.ended ? nullptr : window.limit;
}

/// The rest of a run, of which nothing has been found yet.
HWY_NOINLINE inline const char* longRunEnd(const TailRun& run, const char* text, const Window& window) {
    return firstOf(text, window.limit, '"', '\n', run.otherStop);
}

/// The tail that nearly all patterns have: blanks, an optional quote, and a run up to a stop.
HWY_INLINE const char* runTailEnd(const TailRun& run, const char* text, const Window& window) {
    // Nearly every such tail ends within what is looked at first. The byte at the limit is NUL, which is no blank.
    constexpr std::size_t atFirst = std::max<std::size_t>(32, hn::MaxLanes(hn::CappedTag<std::uint8_t, 64>()));
    const std::uint64_t blanks = bitsOfBytes<atFirst>(text, ' ', run.otherBlank);
    const std::uint64_t stops = bitsOfBytes<atFirst>(text, '"', '\n', run.otherStop);
    if ((blanks & 1U) == 0 && run.needsBlank) {
        return text < window.limit ? nullptr : unfinished(window);
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
    const char* const nameEnd = firstOf(nameStart + (*nameStart == '"' ? 1 : 0), window.limit, '"');
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

} // namespace rose::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
