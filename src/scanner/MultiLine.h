#pragma once

#include "scanner/Value.h"

#include <cstddef>

namespace rose {

/// How many bytes of a multi-line text are kept.
inline constexpr std::size_t longestMultiLine = 9999;

/// Reads a multi-line text from the input behind the current match: a newline, then lines that begin with "|". The
/// value is their text without the "|", joined by newlines, cut after `longestMultiLine` bytes. The input then goes on
/// with the newline that ends the last of them; the current match stays as it is. No value, and an untouched input,
/// when the next line does not begin with "|".
Value getMultiLine();

} // namespace rose
