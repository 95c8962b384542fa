#pragma once

#include <cstdint>

namespace bench {

/// Numbers that look random and depend on the seed alone, on every machine (SplitMix64).
class Random {
public:
    explicit Random(std::uint64_t seed) noexcept : state_(seed) {}

    std::uint64_t next() noexcept {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    /// A number from 0 to `limit` - 1; `limit` must not be 0.
    std::uint64_t below(std::uint64_t limit) noexcept { return next() % limit; }

    bool chance(unsigned percent) noexcept { return below(100) < percent; }

private:
    std::uint64_t state_;
};

} // namespace bench
