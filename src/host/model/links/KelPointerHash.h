#pragma once

#include <cstddef>
#include <cstdint>

/// A hash of the addresses of objects for `tsl::robin_map`, which uses the low bits.
///
/// The place within a page of memory stays in the low bits, so those who look up objects in the order in which they
/// were made find them near each other in the table, and not in a part of it that is no longer in the cache.
struct KelPointerHash {
    [[nodiscard]] std::size_t operator()(const void* pointer) const noexcept {
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15ULL;
        constexpr unsigned pageBits = 12;
        constexpr unsigned lineBits = 6; // objects are larger
        const auto address = reinterpret_cast<std::uintptr_t>(pointer);
        const std::uint64_t product = (address >> pageBits) * golden;
        return static_cast<std::size_t>((product ^ (product >> 32)) +
                                        (address >> lineBits) % (1U << (pageBits - lineBits)));
    }
};
