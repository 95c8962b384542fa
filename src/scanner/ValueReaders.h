#pragma once

#include "scanner/Value.h"

namespace rose {

/// The readers take a value out of `text`, the current match as a C string; a NUL in the match ends what they see.
/// Nothing is unescaped or converted. A result without a value says that the text holds none.

/// What follows the last `delimiter`; no value without one.
Value getValue(const char* text, char delimiter);

/// What follows the last `delimiter`; without one, what follows the last "@" and then a tab, which marks the number of
/// a view; no value without either.
Value getValue3(const char* text, char delimiter);

/// The same as `getValue3`.
Value getValue4(const char* text, char delimiter);

/// What stands between the third and the fourth `delimiter`, and in `viewNumber` the decimal number that follows the
/// last "@" (as `strtol` reads it). No value with fewer than four delimiters; `viewNumber` is left alone then, and also
/// when there is no "@".
Value getValue5(const char* text, char delimiter, long* viewNumber);

} // namespace rose
