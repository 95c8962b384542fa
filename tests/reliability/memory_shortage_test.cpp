// Memory: an import that runs out of it fails as every import does and leaves nothing behind, and many imports take no
// more than a few.

#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/log/KelException.h"
#include "host/options/KelOptionList.h"
#include "support/ImportedModel.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

constexpr std::string_view unexpected =
    "[HOCM_F0001] Unexpected error in bridge KelIbmRationalRose40Import: the import was given up and its model "
    "emptied. Please check that the file is complete, and report the error together with the file.";

class SilentLog final : public KelLog {
public:
    void record(const KelLogEvent& /*event*/) override {}
};

struct ShortageCase {
    const char* name;
    const char* file;
    const char* encoding;
    MemoryShortage::Extent extent;
};

void PrintTo(const ShortageCase& shown, std::ostream* stream) {
    *stream << shown.name;
}

class MemoryShortageTest : public testing::TestWithParam<ShortageCase> {
protected:
    /// One import of which allocation `number` fails. Returns whether that one was asked for.
    bool importShortOf(long number);

    const std::string path = std::string(PETAL_EXAMPLES "/") + GetParam().file;
    const ImportedModel::Choices choices{.encoding = GetParam().encoding};
    const ImportedModel whole = ImportedModel::ofFile(path, choices);
    int notOpened = 0;
};

bool MemoryShortageTest::importShortOf(long number) {
    KelIbmRationalRose40ImportDllInterface bridge;
    const KelString bridgeId("bridge-under-test");
    KelOptionList options;
    bridge.getOptionList(options);
    options.setFreeValue("File", path.c_str());
    options.setFreeValue("Encoding", GetParam().encoding);
    KelModel model;
    SilentLog log;
    KelException failure("none");
    bool struck = false;
    {
        const MemoryShortage shortage(number, GetParam().extent);
        try {
            bridge.run(bridgeId, model, options, log);
        } catch (const KelException& thrown) {
            failure = thrown;
        }
        struck = MemoryShortage::hasStruck();
    }
    if (failure.getMessage() == "none") {
        // It did without, or there was enough.
        EXPECT_EQ(jsonOf(model), whole.json());
    } else {
        const bool cannotOpen = failure.getMessage().view().starts_with("[QEV_RRSE_F0001] Unable to open");
        notOpened += static_cast<int>(cannotOpen);
        EXPECT_TRUE(struck);
        EXPECT_TRUE(cannotOpen || failure.getMessage().view() == unexpected) << failure.what();
        EXPECT_TRUE(model.childPackages().isEmpty());
        EXPECT_TRUE(model.types().isEmpty());
        EXPECT_TRUE(model.metadataOrigins().isEmpty());
        EXPECT_TRUE(model.getName().isEmpty());
    }
    return struck;
}

TEST_P(MemoryShortageTest, WhicheverAllocationFailsTheModelIsEmptyAndTheNextImportUnharmed) {
    const std::string json = whole.json();
    const auto importAgain = [&](int failures) {
        SCOPED_TRACE(failures);
        const bool struck = importShortOf(failures);
        const ImportedModel next = ImportedModel::ofFile(path, choices);
        EXPECT_TRUE(next.json() == json && next.log.lines == whole.log.lines);
        return struck;
    };
    importAgain(0); // what is made once and stays is there now
    const long level = liveAllocations();
    int failures = 0;
    while (importAgain(failures) && !HasFailure()) {
        ++failures;
    }
    EXPECT_EQ(liveAllocations(), level);
    EXPECT_GT(failures, 300);
    EXPECT_LE(notOpened, 3);
}

using enum MemoryShortage::Extent;

INSTANTIATE_TEST_SUITE_P(Cases, MemoryShortageTest,
                         testing::Values(ShortageCase{"once", "everything.mdl", "windows-1252", once},
                                         ShortageCase{"lasting", "everything.mdl", "windows-1252", lasting},
                                         ShortageCase{"statefulEncoding", "bookshop.mdl", "ISO-2022-JP", once},
                                         ShortageCase{"markedEncoding", "bookshop.mdl", "UTF-16", lasting}),
                         [](const auto& info) { return info.param.name; });

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
