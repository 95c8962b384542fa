#pragma once

#include "notation/Token.h"

namespace notation {

/// The kind of a run of word bytes: an integer ("-12"), a real number ("0.25", "1e-5"), a reference ("@7") or a word.
/// A run with more digits than any number needs is a word.
[[nodiscard]] TokenKind wordKind(std::string_view run);

} // namespace notation
