#pragma once

#include <string_view>

namespace petal {

/// Writes a text for people to standard output. Throws a `Failure` with the outcome `outputFailed`.
void writeToStandardOutput(std::string_view text);

} // namespace petal
