#pragma once

#include <string_view>

namespace petal {

/// The open file descriptor that a path such as "/dev/stdout" or "/dev/fd/3" names; -1 for other paths.
///
/// Opening such a path would open the file behind the descriptor a second time, at its beginning.
[[nodiscard]] int namedDescriptor(std::string_view path);

/// A new descriptor for what `descriptor` stands for. Throws `std::system_error`.
[[nodiscard]] int duplicate(int descriptor);

} // namespace petal
