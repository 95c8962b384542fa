#pragma once

#include <string>
#include <vector>

namespace petal {

/// The names in a list of files, bytes as they stand, without empty ones: one to a line, or each ended by a NUL. "-" is
/// standard input. Where no file has the name of a line that ends with a carriage return, the name is without it.
/// Throws a `Failure` with the outcome `inputNotRead`.
[[nodiscard]] std::vector<std::string> readFileList(const std::string& list, bool nulSeparated);

} // namespace petal
