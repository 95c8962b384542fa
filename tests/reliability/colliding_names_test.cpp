// Names computed so that a hash that is the same in every process gives one value for all of them.

#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/text/KelTextHash.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

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

std::vector<std::string> collidingNames(std::size_t count) {
    std::vector<std::string> names;
    for (int number = 0; names.size() < count; ++number) {
        std::string name = collidingName(number);
        if (name.find_first_of(std::string("\0\"\n@:\t", 6)) == std::string::npos) { // else it would be cut
            names.push_back(std::move(name));
        }
    }
    return names;
}

TEST(CollidingNamesTest, AreNamesLikeAnyOthers) {
    constexpr std::size_t count = 12'000;
    const std::vector<std::string> names = collidingNames(count);
    std::set<std::size_t> fixedHashes;
    std::set<std::size_t> keyedHashes;
    std::string body = "(object Class_Category \"Logical View\"\n";
    for (const std::string& name : names) {
        fixedHashes.insert(std::hash<std::string>()(name));
        keyedHashes.insert(KelTextHash()(name));
        body += "(object Class \"" + name + "\"\n(object ClassAttribute \"a\"\ntype \"" + name + "\"\n";
    }
    ASSERT_EQ(fixedHashes.size(), 1U) << "these names prove nothing here";
    EXPECT_EQ(keyedHashes.size(), count);

    const ImportedModel imported = ImportedModel::ofBody(body, {.encoding = "unknown"});
    EXPECT_EQ(imported.failure, "");
    const auto& logicalView = static_cast<const KelDesignPackage&>(*imported.model.childPackages()[0]);
    EXPECT_EQ(logicalView.modelElements().count(), static_cast<int>(count));
}

} // namespace
