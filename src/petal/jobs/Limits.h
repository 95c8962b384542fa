#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace petal {

/// What one import may take. Holds for the process that it runs in.
struct Limits {
    std::optional<std::chrono::milliseconds> time;
    std::optional<std::uint64_t> memory; // bytes of writable memory
};

} // namespace petal
