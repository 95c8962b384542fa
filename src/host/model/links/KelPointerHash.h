#pragma once

#include <cstddef>
#include <cstdint>

/// A hash of addresses for `tsl::robin_map`, which uses the low bits: in an address these are always 0.
struct KelPointerHash {
    [[nodiscard]] std::size_t operator()(const void* pointer) const noexcept {
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15ULL;
        const std::uint64_t product = reinterpret_cast<std::uintptr_t>(pointer) * golden;
        return static_cast<std::size_t>(product ^ (product >> 32));
    }
};
