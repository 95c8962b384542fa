#pragma once

#include "petal/Failure.h"

#include <optional>
#include <string>
#include <system_error>

namespace petal {

/// The failure to write `what`, which is shown as it is: a quoted path, say, or "standard output".
[[nodiscard]] Failure outputFailure(const std::string& what, const std::system_error& error);
/// What to call an output that `path` leads to: the path, quoted, or "standard output".
[[nodiscard]] std::string outputName(const std::optional<std::string>& path);

} // namespace petal
