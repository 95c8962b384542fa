#pragma once

#include <string>

namespace petal {

/// Whether both paths lead to the same regular file, which may not exist yet.
[[nodiscard]] bool areSameFile(const std::string& first, const std::string& second);

} // namespace petal
