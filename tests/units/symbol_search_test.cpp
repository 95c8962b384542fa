#include "support/InFolder.h"
#include "units/SymbolSearch.h"

namespace {

using units::LostUnit;
using units::LostUnits;
using units::UnitFault;

class Symbols : public InFolder {
protected:
    void putIn(const std::string& path) const { put(path, ""); }

    /// What is lost when a file in a folder of the test's names units, none of which is found.
    [[nodiscard]] LostUnits lost(const std::vector<const char*>& names, const char* naming = "far") const {
        LostUnits lost;
        for (const char* name : names) {
            const LostUnit unit{UnitFault::symbolUnset, name, folder / naming, "", ""};
            lost.add({.units = {unit}, .untold = 0, .provenSymbols = {}});
        }
        return lost;
    }
    /// "X=given/sub 2/3" for each symbol that something is found for.
    [[nodiscard]] std::string found(units::SymbolSearch search, const LostUnits& lost) const {
        std::string text;
        for (const units::SymbolFolder& each : search.find(lost)) {
            text += (text.empty() ? "" : ", ") + each.symbol + "=" + each.folder.lexically_relative(folder).string() +
                    " " + std::to_string(each.found) + "/" + std::to_string(each.units);
        }
        return text;
    }
};

TEST_F(Symbols, StandForTheFolderThatMostUnitsSpeakFor) {
    for (const char* path :
         {"given/plug/a/model/A.cat", "given/plug/b/B.cat", "given/copy/plug/b/B.cat", "given/copz/k/twin.cat",
          "given/copy/k/twin.cat", "given/old/a/model/A.cat", "given/old/C.cat", "given/Älter/D.cat",
          "given/pipe.cat/x", "above/proj/sub/x", "above/lib/u.cat", "above/v.cat", "far/x"}) {
        putIn(path);
    }
    std::filesystem::create_directory_symlink(folder / "given", folder / "given/plug/loop");
    struct Row {
        std::vector<const char*> names;
        const char* expected;
    };
    for (const Row& row : {
             Row{{R"($X\a\model\A.cat)", R"($X\b\B.cat)"}, "X=given/plug 2/2"},
             Row{{"$x/A/Model/a.CAT", R"($X\B/b.cat)"}, "X=given/plug 2/2"},
             Row{{R"($X\a\model\A.cat)"}, "X=given/old 1/1"}, // the shorter path
             Row{{R"($X\k\twin.cat)"}, "X=given/copy 1/1"},
             Row{{R"($X\a\model\A.cat)", R"($X\a\model\A.cat)", R"($X\C.cat)", R"($X\none.cat)"}, "X=given/old 3/4"},
             Row{{R"($X\q\..\b\.\B.cat)", R"($X\b\B.cat)"}, "X=given/plug 1/2"}, // there is no folder q
             Row{{R"($X\a\..\b\B.cat)"}, "X=given/plug 1/1"},
             Row{{R"($X\..\plug\b\B.cat)"}, ""},
             Row{{R"($X\D.cat)", R"($Y\älter\D.cat)", R"($Z\Älter\D.cat)"}, "X=given/Älter 1/1, Z=given 1/1"},
             Row{{R"($X\pipe.cat)"}, ""},
             Row{{R"($X\given\plug\b\B.cat)"}, "X=. 1/1"}, // above what was given
             Row{{R"($CURDIR\C.cat)", R"(a\model\A.cat)", R"(C:\b\B.cat)", "$X", "$=\\C.cat", "$$X\\C.cat", "$\\C.cat"},
                 ""},
             Row{{}, ""},
         }) {
        EXPECT_EQ(found({{folder / "given"}, {}}, lost(row.names)), row.expected) << testing::PrintToString(row.names);
    }
    // Without a folder to search, what is above the naming file counts.
    const LostUnits ofProject = lost({R"($X\lib\U.cat)", R"($X\v.cat)"}, "above/proj/sub");
    EXPECT_EQ(found({{}, {folder / "above/proj/sub"}}, ofProject), "X=above 2/2");
    EXPECT_EQ(found({{}, {folder / "given/plug/b"}}, lost({R"($X\b\B.cat)"})), "X=given/plug 1/1");
}

TEST_F(Symbols, AreLeftAloneWhereTheyLeadToUnits) {
    putIn("given/a.cat");
    LostUnits some = lost({R"($X\a.cat)", R"($Y\a.cat)"});
    some.add({.units = {}, .untold = 0, .provenSymbols = {"x"}});
    EXPECT_EQ(found({{folder / "given"}, {}}, some), "Y=given 1/1");
}

TEST_F(Symbols, AreMappedAsLongAsThatHelps) {
    putIn("given/a/one.cat");
    putIn("given/b/two.cat");
    units::PathSymbols fixed;
    fixed.map("Fixed", "elsewhere");
    units::UnitLocator locator(fixed, {});
    units::SymbolSearch search({folder / "given"}, {});
    int surveys = 0;
    const auto survey = [&] { // the unit of A holds that of B
        ++surveys;
        return !locator.getSymbols().isMapped("a")   ? lost({R"($A\one.cat)", R"($FIXED\one.cat)"})
               : !locator.getSymbols().isMapped("b") ? lost({R"($B\two.cat)", R"($FIXED\one.cat)"})
                                                     : lost({R"($FIXED\one.cat)"});
    };
    EXPECT_EQ(units::mapSymbols(locator, search, survey).size(), 2U);
    EXPECT_EQ(surveys, 3);
    EXPECT_EQ(locator.getSymbols().find("A"), folder / "given/a");
    EXPECT_EQ(locator.getSymbols().find("B"), folder / "given/b");
    EXPECT_EQ(locator.getSymbols().find("Fixed"), "elsewhere");
}

} // namespace
