#pragma once

#include "scanner/Pattern.h"

namespace rose {

/// The part of the input that is buffered.
struct Window {
    const char* begin; ///< the first byte that is not consumed
    const char* limit; ///< behind the last byte
    bool ended;        ///< whether the input ends at `limit`
};

/// Where the tail that starts at `text` ends; null when the text there is no such tail. A result of `window.limit`
/// while the input goes on behind it decides nothing: more text is needed.
const char* tailEnd(Tail tail, const char* text, const Window& window);

/// As `tailEnd` for the second part of a literal, with the optional blanks before it.
const char* secondLiteralEnd(const Literal& literal, const char* text, const Window& window);

} // namespace rose
