// A made model file holds what its maker says, and an import of it loses none of it.

#include "model/JsonCounts.h"
#include "model/ModelFile.h"
#include "model/Shapes.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace bench {

void PrintTo(const Counts& counts, std::ostream* out) {
    *out << counts;
}

namespace {

TEST(MadeModels, AreImportedWithoutLoss) {
    constexpr std::uint64_t size = 500'000;
    char* bytes = nullptr;
    std::size_t length = 0;
    std::FILE* const file = ::open_memstream(&bytes, &length);
    const Counts written = writeModelFile(file, *findShape("plain"), Amount::ofBytes(size), 1);
    std::fclose(file);
    const std::unique_ptr<char, void (*)(void*)> owned(bytes, std::free);
    EXPECT_NEAR(static_cast<double>(length), size, size * 0.2);

    const ImportedModel imported = ImportedModel::ofBytes({bytes, length});
    EXPECT_EQ(imported.failure, "");
    std::string json = imported.json();
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> read(::fmemopen(json.data(), json.size(), "r"), std::fclose);
    EXPECT_EQ(countJson(read.get()), written);
}

} // namespace

} // namespace bench
