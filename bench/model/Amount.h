#pragma once

#include <cstdint>

namespace bench {

/// How much shall be written: so many bytes, or so many of the things that the shape of the model is about.
struct Amount {
    enum class Unit : std::uint8_t { bytes, things };

    Unit unit;
    std::uint64_t number;

    static constexpr Amount ofBytes(std::uint64_t number) noexcept { return {Unit::bytes, number}; }
    static constexpr Amount ofThings(std::uint64_t number) noexcept { return {Unit::things, number}; }
};

} // namespace bench
