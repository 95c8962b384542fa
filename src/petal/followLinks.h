#pragma once

#include <filesystem>

namespace petal {

/// What a path stands for when it is a symbolic link, which may lead to a file that does not exist yet; else the path
/// itself. Throws `std::system_error`.
[[nodiscard]] std::filesystem::path followLinks(std::filesystem::path file);

} // namespace petal
