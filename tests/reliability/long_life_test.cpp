// A process that imports again and again, with and without success, neither grows nor changes what it gives.

#include "support/ImportedModel.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* everything = PETAL_EXAMPLES "/everything.mdl";

/// One import of each kind; the two that succeed give their documents.
std::string importAll() {
    const std::string brokenOff = "(object Class_Category \"Logical View\"\n(object Class \"A\"\n Parent_View @5\n"
                                  "(object ClassAttribute \"x\"\n type \"char\"\n supplier @5\n";
    EXPECT_EQ(ImportedModel::ofBody(brokenOff).failure, "[QEV_RRSE_F0009] Diagram not yet created");
    EXPECT_EQ(ImportedModel::ofBytes("no model file").failure, "[QEV_RRSE_F0002] Invalid input file format");
    EXPECT_NE(ImportedModel::ofFile("/nowhere/a.mdl").failure, "");
    const ImportedModel asOracle = ImportedModel::ofFile(everything, {.types = "Oracle 7.x & 8"});
    return asOracle.json() + ImportedModel::ofFile(everything).json();
}

TEST(LongLifeTest, AHundredRoundsLeaveMemoryAndModelsAsTheyWere) {
    const std::string first = importAll();
    static_cast<void>(importAll()); // tables that stay have their size now
    const long level = liveAllocations();
    for (int round = 0; round < 100; ++round) {
        ASSERT_EQ(importAll(), first) << round;
    }
    EXPECT_EQ(liveAllocations(), level);
}

} // namespace
