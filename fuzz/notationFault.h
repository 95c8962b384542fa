#pragma once

#include <string>
#include <string_view>

namespace fuzz {

/// How the reader of the notation breaks its contract on these bytes; empty when it keeps it. The same bytes are read
/// in blocks of several sizes, through a small window, and without the faster way for usual events as well.
[[nodiscard]] std::string notationFault(std::string_view text);

} // namespace fuzz
