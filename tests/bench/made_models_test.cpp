// Model files of every shape hold what their maker says, and an import of them loses none of it.

#include "model/JsonCounts.h"
#include "model/ModelFile.h"
#include "model/Shapes.h"
#include "notation/Reader.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <utility>

namespace bench {

void PrintTo(const Counts& counts, std::ostream* out) {
    *out << counts;
}

namespace {

struct MadeModel {
    std::string bytes;
    Counts written;
};

MadeModel make(const Shape& shape, Amount amount, std::uint64_t seed) {
    char* bytes = nullptr;
    std::size_t length = 0;
    std::FILE* const file = ::open_memstream(&bytes, &length);
    MadeModel made;
    made.written = writeModelFile(file, shape, amount, seed);
    std::fclose(file);
    made.bytes.assign(bytes, length);
    std::free(bytes);
    return made;
}

Counts countText(std::string json) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(::fmemopen(json.data(), json.size(), "r"), std::fclose);
    return countJson(file.get());
}

/// Whether a line of the log, which begins with a code such as QEV_RRSE_S0001, tells of trouble.
bool isTrouble(const std::string& line) {
    constexpr std::string_view scope = "QEV_RRSE_";
    return !line.starts_with(scope) || std::string_view("WEF").find(line[scope.size()]) != std::string_view::npos;
}

class MadeModels : public testing::TestWithParam<Shape> {};

TEST_P(MadeModels, AreImportedWithoutLoss) {
    constexpr std::uint64_t size = 500'000;
    const MadeModel made = make(GetParam(), Amount::ofBytes(size), 1);
    EXPECT_NEAR(static_cast<double>(made.bytes.size()), size, size * 0.2);
    const ImportedModel imported = ImportedModel::ofBytes(made.bytes);
    EXPECT_EQ(imported.failure, "");
    for (const std::string& line : imported.log.lines) {
        EXPECT_FALSE(isTrouble(line)) << line;
    }
    EXPECT_EQ(countText(imported.json()), made.written);
}

TEST(MadeModel, HoldsAsManyThingsAsAreWanted) {
    constexpr std::uint64_t wanted = 1200;
    constexpr std::array table{
        std::pair("packages-flat", Counted::classes), std::pair("packages-nested", Counted::packages),
        std::pair("attributes", Counted::attributes), std::pair("diagrams", Counted::diagrams),
        std::pair("views", Counted::drawnElements),   std::pair("associations", Counted::associations),
        std::pair("forward", Counted::classes),       std::pair("keys", Counted::roleNameMaps)};
    for (const auto& [shape, counted] : table) {
        const MadeModel made = make(*findShape(shape), Amount::ofThings(wanted), 1);
        EXPECT_NEAR(static_cast<double>(made.written.of(counted)), wanted, 2) << shape;
        EXPECT_EQ(countText(ImportedModel::ofBytes(made.bytes).json()), made.written) << shape;
    }
}

TEST_P(MadeModels, AreSoundNotation) {
    const MadeModel made = make(GetParam(), Amount::ofBytes(20'000), 1);
    notation::MemorySource source(made.bytes);
    notation::Reader reader(source);
    while (reader.next()) {
        ASSERT_NE(reader.event().kind, notation::EventKind::damage);
    }
}

TEST_P(MadeModels, AreTheSameForTheSameSeed) {
    constexpr std::uint64_t size = 20'000;
    EXPECT_EQ(make(GetParam(), Amount::ofBytes(size), 5).bytes, make(GetParam(), Amount::ofBytes(size), 5).bytes);
}

INSTANTIATE_TEST_SUITE_P(OfEveryShape, MadeModels, testing::ValuesIn(shapes().begin(), shapes().end()),
                         [](const testing::TestParamInfo<Shape>& shape) {
                             std::string name(shape.param.name);
                             std::erase(name, '-');
                             return name;
                         });

TEST(JsonCounts, TellsApartWhatIsCalledTheSame) {
    const Counts counts = countText(R"({"name": "", "packages": [{"id": 1, "notes": ["\u00E9e", ""],
        "elements": [{"kind": "class", "attributes": [{"id": 2, "type": 7}], "keys": [{"attributes": [2, 3]}]},
                     {"kind": "association", "roles": [{"class": 5, "description": "four"}]}],
        "diagrams": [{"elements": [1, 2, 3]}]}]})");
    Counts expected;
    for (const Counted one : {Counted::packages, Counted::classes, Counted::attributes, Counted::types,
                              Counted::associations, Counted::roles, Counted::roleClasses, Counted::diagrams}) {
        expected.add(one);
    }
    expected.add(Counted::notes, 2);
    expected.add(Counted::noteCharacters, 2);
    expected.add(Counted::keyAttributes, 2);
    expected.add(Counted::descriptionCharacters, 4);
    expected.add(Counted::drawnElements, 3);
    EXPECT_EQ(counts, expected);
}

TEST(JsonCounts, RefusesWhatIsNoJson) {
    EXPECT_THROW(countText(R"({"packages": [)"), std::runtime_error);
}

} // namespace

} // namespace bench
