#pragma once

#include "notation/Token.h"

namespace notation {

/// What a run of word bytes is: an integer ("-12"), a real number ("0.25", "1e-5"), a reference ("@7") or a word.
/// Digits in greater number than any number needs make a word.
[[nodiscard]] TokenKind wordKind(std::string_view run);

} // namespace notation
