#pragma once

#include "scanner/ByteRuns.h"
#include "scanner/Pattern.h"

namespace rose {

/// The part of the input that is buffered.
struct Window {
    const char* begin; ///< the first byte that is not consumed
    const char* limit; ///< behind the last byte
    bool ended;        ///< whether the input ends at `limit`
};

/// What a search says that came to the window's limit before it had all it needs.
inline const char* unfinished(const Window& window) {
    return window.ended ? nullptr : window.limit;
}

/// As `tailEnd` for the tails that nearly all patterns have: spaces or `otherBlank`, of which there must be one where
/// `blanksNeeded`, an optional quote, and a run up to a quote, a newline or `Stop`.
template <char... Stop>
const char* runTailEnd(bool blanksNeeded, char otherBlank, const char* text, const Window& window) {
    const char* const blanksEnd = bytes::afterBlanks(text, otherBlank);
    if (blanksNeeded && blanksEnd == text) {
        return text < window.limit ? nullptr : unfinished(window);
    }
    // The byte at the limit is NUL.
    return bytes::firstStop<Stop...>(blanksEnd + (*blanksEnd == '"' ? 1 : 0), window.limit);
}

/// Where the tail that starts at `text` ends; null when the text there is no such tail. A result of `window.limit`
/// while the input goes on behind it decides nothing: more text is needed.
const char* tailEnd(Tail tail, const char* text, const Window& window);

/// As `tailEnd` for the second part of a literal, with the optional blanks before it.
const char* secondPartEnd(std::string_view secondPart, const char* text, const Window& window);

} // namespace rose
