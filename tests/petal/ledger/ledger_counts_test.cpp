// Everything that a file holds is counted once, by the account of `petal info`.

#include "ledger/makeLedger.h"
#include "petal/info/gatherFileInfo.h"
#include "scanner/RealModels.h"
#include "support/ImportedModel.h"
#include "support/RandomModelFile.h"
#include "support/accountFault.h"
#include "units/OpenFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

using ledger::Detail;
using ledger::Ledger;

std::uint64_t linesOf(const Ledger& ledger, std::uint64_t entries) {
    std::uint64_t lines = entries;
    for (const ledger::KindTally* kind : ledger.sortedKinds()) {
        for (const ledger::PropertyTally* property : kind->sortedProperties()) {
            for (const ledger::PropertyGroup& group : property->groups) {
                lines += group.count;
            }
        }
    }
    return lines;
}

void expectCountsOfInfo(const std::string& path) {
    units::OpenFile file(path);
    const petal::FileInfo info = petal::gatherFileInfo(file);
    if (!info.isModel) {
        return; // nothing else is told of it
    }
    units::UnitTree tree;
    tree.files.push_back({path, 0, {}, {}});
    const char* encoding = info.encoding != nullptr ? info.encoding : "windows-1252";
    source::Trace trace;
    ImportedModel imported = ImportedModel::ofFile(path, {"C++", encoding});
    trace.locate(nullptr);
    const auto make = [&](Detail detail, KeptEntries& kept) {
        return ledger::makeLedger(tree, trace, imported.model, {encoding, false, detail}, &kept);
    };
    KeptEntries allEntries;
    const Ledger all = make(Detail::all, allEntries);
    EXPECT_EQ(accountFault(all, imported.model), "");
    std::map<std::string, std::uint64_t, std::less<>> objects;
    for (const ledger::KindTally* kind : all.sortedKinds()) {
        objects[kind->name] += kind->objects.total();
    }
    std::erase_if(objects, [](const auto& kind) { return kind.second == 0; }); // the file lacks their beginning
    EXPECT_EQ(objects, info.objects);
    EXPECT_EQ(all.properties().total(), info.propertyCount);
    EXPECT_EQ(all.damageCount, info.damageCount);
    EXPECT_EQ(allEntries.entries.size(), info.objectCount + info.propertyCount);
    KeptEntries namedEntries;
    const Ledger named = make(Detail::named, namedEntries);
    EXPECT_EQ(linesOf(named, namedEntries.entries.size()), info.objectCount + info.propertyCount);
    EXPECT_TRUE(areInOrder(namedEntries.entries));
    KeptEntries none;
    const Ledger counts = make(Detail::counts, none);
    EXPECT_TRUE(none.entries.empty());
    EXPECT_EQ(counts.losses, all.losses);
    EXPECT_EQ(counts.badByteCount, all.badByteCount);
    for (std::size_t outcome = 0; outcome < ledger::outcomeWords.size(); ++outcome) {
        EXPECT_EQ(counts.objects().byOutcome[outcome], all.objects().byOutcome[outcome]);
        EXPECT_EQ(counts.properties().byOutcome[outcome], named.properties().byOutcome[outcome]);
    }
}

/// The text with some of its pieces lost, repeated or overwritten.
std::string mutated(std::string text, unsigned int seed) {
    constexpr std::string_view marks = "()\"\n|,@ \x80";
    std::mt19937 random(seed);
    for (int change = 0; change < 6; ++change) {
        const std::size_t at = 40 + random() % (text.size() - 40);
        const std::size_t length = random() % 200;
        switch (random() % 3) {
        case 0:
            text.erase(at, length);
            break;
        case 1:
            text.insert(at, text.substr(random() % text.size(), length));
            break;
        default:
            text[at] = marks[random() % marks.size()];
        }
    }
    return text;
}

std::vector<std::filesystem::path> examples() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(PETAL_EXAMPLES)) {
        if (entry.is_regular_file()) {
            paths.push_back(entry.path());
        }
    }
    return paths;
}

TEST(LedgerCounts, AreThoseOfInfoForExamplesAndTheirMutations) {
    const std::string path = testing::TempDir() + "ledger_mutated.mdl";
    for (const auto& example : examples()) {
        SCOPED_TRACE(example);
        expectCountsOfInfo(example.string());
        for (unsigned int seed = 1; seed <= 60; ++seed) {
            SCOPED_TRACE(seed);
            std::ofstream(path) << mutated(rose::test::contents(example), seed);
            expectCountsOfInfo(path);
        }
    }
    for (unsigned int seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::ofstream(path) << petalHeader << RandomModelFile(seed, RandomModelFile::Kind::wild).getBody();
        expectCountsOfInfo(path);
    }
    std::filesystem::remove(path);
}

TEST(LedgerCounts, AreThoseOfInfoForRealModels) {
    const auto models = rose::test::realModels();
    if (models.empty()) {
        GTEST_SKIP() << rose::test::noRealModels;
    }
    for (const auto& model : models) {
        SCOPED_TRACE(model);
        expectCountsOfInfo(model.string());
    }
}

} // namespace
