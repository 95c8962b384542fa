#pragma once

#include <string>

namespace petal {

/// The bytes of a file, or of standard input for "-". Throws a `Failure` with the outcome `inputNotRead`.
[[nodiscard]] std::string readWholeFile(const std::string& path);

} // namespace petal
