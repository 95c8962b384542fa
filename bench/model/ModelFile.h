#pragma once

#include "model/Amount.h"
#include "model/Counts.h"

#include <cstdint>
#include <cstdio>

namespace bench {

struct Shape;

/// Writes a model file of that shape and of about that size to `out`, which stays the caller's. The same amount and
/// seed give the same bytes. Returns what an import of the file must find in it.
/// Throws std::system_error when it cannot be written.
Counts writeModelFile(std::FILE* out, const Shape& shape, Amount amount, std::uint64_t seed);

} // namespace bench
