#include "LedgerText.h"
#include "ledger/propertyTable.h"
#include "scanner/RealModels.h"
#include "support/RandomModelFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace {

SourceCounts countsOf(const ledger::Ledger& ledger) {
    return {ledger.objects().total(), ledger.properties().total()};
}

/// Everything is counted once, whatever the file holds; with all details, everything has a line.
void expectEverythingCounted(const std::string& path) {
    SCOPED_TRACE(path);
    const SourceCounts expected = SourceCounts::of(path);
    const LedgerText named = LedgerText::ofFile(path);
    EXPECT_TRUE(countsOf(named.ledger) == expected);
    const LedgerText all = LedgerText::ofFile(path, ledger::Detail::all);
    EXPECT_TRUE(countsOf(all.ledger) == expected);
    EXPECT_EQ(all.ledger.entries.size(), expected.objects + expected.properties);
    std::uint64_t grouped = 0;
    for (const ledger::KindTally* kind : named.ledger.sortedKinds()) {
        for (const ledger::PropertyTally* property : kind->sortedProperties()) {
            for (const ledger::PropertyGroup& group : property->groups) {
                grouped += group.count;
            }
        }
    }
    EXPECT_EQ(named.ledger.entries.size() + grouped, expected.objects + expected.properties);
    EXPECT_EQ(LedgerText::ofFile(path, ledger::Detail::counts).ledger.losses, named.ledger.losses);
    EXPECT_TRUE(std::ranges::is_sorted(named.ledger.entries, {}, &ledger::Entry::order));
}

TEST(LedgerCounts, EverythingOnceInExamplesAndRandomModels) {
    for (const auto& entry : std::filesystem::directory_iterator(PETAL_EXAMPLES)) {
        if (entry.is_regular_file()) {
            expectEverythingCounted(entry.path().string());
        }
    }
    const std::string path = testing::TempDir() + "ledger_random.mdl";
    for (unsigned int seed = 1; seed <= 60; ++seed) {
        std::string text = std::string(petalHeader) + RandomModelFile(seed, RandomModelFile::Kind::wild).getBody();
        if (seed % 3 == 0) {
            text.resize(text.size() * (seed % 7) / 7); // cut anywhere
        }
        std::ofstream(path) << text;
        expectEverythingCounted(path);
    }
    std::filesystem::remove(path);
}

TEST(LedgerCounts, EverythingOnceInRealModels) {
    const auto models = rose::test::realModels();
    if (models.empty()) {
        GTEST_SKIP() << rose::test::noRealModels;
    }
    for (const auto& model : models) {
        expectEverythingCounted(model.string());
    }
}

TEST(LedgerTables, HaveOneRowForEachKind) {
    std::set<std::string_view> kinds;
    for (const ledger::KindRow& row : ledger::kindRows()) {
        EXPECT_TRUE(kinds.insert(row.kind).second) << row.kind;
        EXPECT_EQ(&ledger::kindRow(row.kind), &row);
        EXPECT_NE(*row.reason.text, '\0') << row.kind;
        EXPECT_EQ(row.reason.outcome == ledger::Outcome::dropped, row.subject == ledger::Subject::none ||
                                                                      row.subject == ledger::Subject::treeView ||
                                                                      row.subject == ledger::Subject::label)
            << row.kind;
    }
}

TEST(LedgerBytes, AreToldWithTheirPlaces) {
    const LedgerText text = LedgerText::of(
        "(object Class \"A\xB7\"\n documentation \t\n|ok\n|\xD6\xD0\xB7 \xB7 y\n stereotype \"\xB7 \"\n"
        " word\xB7 \t12\n kind \tw\xB7\n cardinality \t(value c\xB7 \"1\")\n operations \t(list l\xB7))\n"
        "(object K\xB7 \"m\xB7 \" @3)\n(object K\xB7)",
        "", "windows-936");
    std::string found;
    for (const ledger::BadBytes& bad : text.ledger.badBytes) {
        found += std::to_string(bad.place.line - LedgerText::firstLine + 1) + ":" + std::to_string(bad.place.column) +
                 " " + std::to_string(bad.bytes.size()) + "\n";
    }
    EXPECT_EQ(found, "1:17 1\n4:4 1\n4:6 1\n5:14 1\n6:6 1\n7:9 1\n8:23 1\n9:21 1\n10:10 1\n10:14 1\n11:10 1\n");
}

TEST(LedgerDamages, AreToldAndCounted) {
    const LedgerText text = LedgerText::of("(object Class \"A\")\n junk words 17 \"text\" )\n(object Class \"B\"\n"
                                           " documentation \"unclosed\n stereotype \"s\")");
    std::string found;
    for (const ledger::DamagedPlace& damaged : text.ledger.damages) {
        found += std::to_string(damaged.damage.place.line - LedgerText::firstLine + 1) + " " +
                 notation::damageWord(damaged.damage.kind) + "\n";
    }
    EXPECT_EQ(found,
              "2 missingClose\n2 unnamedValue\n3 missingClose\n4 unclosedText\n5 surplusClose\n7 surplusClose\n");
    const LedgerText many = LedgerText::of(std::string(2 * ledger::mostDamages, ','));
    EXPECT_EQ(many.ledger.damages.size(), ledger::mostDamages);
    EXPECT_GE(many.ledger.damageCount, 2 * ledger::mostDamages);
}

} // namespace
