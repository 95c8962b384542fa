#pragma once

#include <string>

namespace petal {

/// What to do about an import of `file` that failed, judged by what the file is.
[[nodiscard]] std::string inputAdvice(const std::string& file);

} // namespace petal
