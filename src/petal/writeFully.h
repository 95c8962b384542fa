#pragma once

#include <string_view>

namespace petal {

/// Writes all of `bytes` to a file descriptor, which may be non-blocking. Throws `std::system_error`.
void writeFully(int descriptor, std::string_view bytes);

/// Throws `std::system_error` with `errno`.
[[noreturn]] void throwErrno();

} // namespace petal
