#pragma once

#include <string>

namespace petal {

/// Lines that tell what went wrong, and what to do next unless `advice` is empty. The texts need not be printable.
[[nodiscard]] std::string failureLines(const std::string& text, const std::string& advice);

/// Writes them to standard error.
void printFailure(const char* text, const std::string& advice);

} // namespace petal
