// Names computed so that a hash that is the same in every process gives one value for all of them.

#include "host/text/KelTextHash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <set>
#include <string>

namespace {

// The constants of the hash that the language's library has on this platform.
constexpr std::uint64_t factor = 0xC6A4A7935BD1E995;
constexpr std::uint64_t seed = 0xC70F6907;
constexpr std::size_t length = 16;

constexpr std::uint64_t inverseOf(std::uint64_t odd) {
    std::uint64_t inverse = odd;
    for (int step = 0; step < 6; ++step) {
        inverse *= 2 - odd * inverse;
    }
    return inverse;
}

constexpr std::uint64_t mixed(std::uint64_t block) {
    block *= factor;
    return (block ^ (block >> 47)) * factor;
}

constexpr std::uint64_t unmixed(std::uint64_t block) {
    block *= inverseOf(factor);
    return (block ^ (block >> 47)) * inverseOf(factor);
}

/// A name of 16 bytes whose second half makes up for what the first has done to the hash.
std::string collidingName(int number) {
    std::string name = "C" + std::to_string(10'000'000 + number).substr(1) + std::string(length / 2, ' ');
    std::uint64_t first = 0;
    std::memcpy(&first, name.data(), sizeof first);
    const std::uint64_t state = (seed ^ (length * factor) ^ mixed(first)) * factor;
    const std::uint64_t second = unmixed(state ^ 0x0123456789ABCDEF);
    std::memcpy(name.data() + sizeof first, &second, sizeof second);
    return name;
}

TEST(CollidingNamesTest, AreNamesLikeAnyOthers) {
    constexpr std::size_t count = 12'000;
    std::set<std::size_t> fixedHashes;
    std::set<std::size_t> keyedHashes;
    for (int number = 0; number < static_cast<int>(count); ++number) {
        const std::string name = collidingName(number);
        fixedHashes.insert(std::hash<std::string>()(name));
        keyedHashes.insert(KelTextHash()(name));
    }
    ASSERT_EQ(fixedHashes.size(), 1U) << "these names prove nothing here";
    EXPECT_EQ(keyedHashes.size(), count);
}

} // namespace
