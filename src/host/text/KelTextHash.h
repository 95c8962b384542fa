#pragma once

#include "host/KelApi.h"

#include <cstddef>
#include <string_view>

/// A hash for texts that come from files. It depends on a random key that each process draws at load, so that nobody
/// can write a file whose names all collide. It does not throw, and any number of threads may use it; hashes differ
/// between processes.
struct KEL_API KelTextHash {
    [[nodiscard]] std::size_t operator()(std::string_view text) const noexcept;
};
