#pragma once

#include "notation/Token.h"

namespace notation {

inline constexpr std::size_t longestNumber = 64;

/// The kind of a run of word bytes: an integer ("-12"), a real number ("0.25", "1e-5"), a reference ("@7") or a word.
/// A run longer than `longestNumber` is a word.
[[nodiscard]] TokenKind wordKind(std::string_view run);

} // namespace notation
