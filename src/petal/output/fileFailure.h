#pragma once

#include "petal/Failure.h"

#include <optional>
#include <string>
#include <system_error>

namespace petal {

/// The failure to read the file at `path`, with the outcome `inputNotRead`.
[[nodiscard]] Failure inputFailure(const std::string& path, const std::system_error& error);
/// What to do about an import of `file` that failed, judged by what the file is.
[[nodiscard]] std::string importAdvice(const std::string& file);

/// The failure to write `what`, which is shown as it is: a quoted path, say, or "standard output".
[[nodiscard]] Failure outputFailure(const std::string& what, const std::system_error& error);
/// What to call an output that `path` leads to: the path, quoted, or "standard output".
[[nodiscard]] std::string outputName(const std::optional<std::string>& path);

} // namespace petal
