#pragma once

#include "model/Counts.h"

#include <cstdint>
#include <cstdio>

namespace bench {

struct Shape;

/// Writes a model file of that shape and of about `size` bytes to `out`, which stays the caller's. The same size and
/// seed give the same bytes. Returns what an import of the file must find in it.
/// Throws std::system_error when it cannot be written.
Counts writeModelFile(std::FILE* out, const Shape& shape, std::uint64_t size, std::uint64_t seed);

} // namespace bench
