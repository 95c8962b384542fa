#include "support/InFolder.h"
#include "units/UnitLocator.h"
#include "units/UnitName.h"

#include <sys/stat.h>

namespace {

class Locator : public InFolder {
protected:
    void putIn(const std::string& path) const {
        std::filesystem::create_directories((folder / path).parent_path());
        put(path, "");
    }
    /// Where a name leads from the folder "m/sub" of a model in "m", and the remark.
    [[nodiscard]] std::string locate(std::string_view name) const {
        units::PathSymbols symbols;
        symbols.map("$Root", folder / "root");
        units::UnitLocator locator(symbols, {folder / "archive"});
        const units::Located located = locator.locate(units::parseUnitName(name), folder / "m" / "sub", folder / "m");
        const std::string found = located.file ? located.file->lexically_relative(folder).string() : "-";
        return found + (located.remark.empty() ? "" : " " + located.remark);
    }
};

TEST_F(Locator, TakesTheFirstPlaceThatHasTheFile) {
    for (const char* path :
         {"m/sub/Near.cat", "m/sub/Pkg/In.cat", "m/Upper.cat", "m/x/Deep.cat", "root/pkg/Ünit.cat",
          "archive/a/old/One.cat", "archive/b/Two.cat", "archive/c/Two.cat", "archive/c/k/Two.cat"}) {
        putIn(path);
    }
    ASSERT_EQ(::mkfifo(pathOf("root/pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", pathOf("root/link to device"));
    std::filesystem::create_symlink("pkg/Ünit.cat", pathOf("root/link to file"));
    ::setenv("UNIT_TEST_FOLDER", (folder / "root").c_str(), 1);
    struct Row {
        const char* name;
        const char* expected;
    };
    for (const Row& row : {
             Row{"Near.cat", "m/sub/Near.cat"},
             Row{R"($CURDIR\pkg\in.cat)", "m/sub/Pkg/In.cat"},
             Row{R"($CurDir\..\upper.cat)", "m/sub/../Upper.cat"},
             Row{R"($ROOT\PKG\Ünit.cat)", "root/pkg/Ünit.cat"},
             Row{R"($UNIT_TEST_FOLDER\pkg\Ünit.cat)", "root/pkg/Ünit.cat"},
             Row{R"($GONE\pkg\in.cat)", "m/sub/Pkg/In.cat found beside the model"},
             Row{R"(D:\far\x\deep.cat)", "m/x/Deep.cat found beside the model"},
             Row{R"($Root\one.cat)", "archive/a/old/One.cat found by its name"},
             Row{R"(q\two.cat)", "archive/b/Two.cat the first of 3 files of that name"},
             Row{R"(q\k\two.cat)", "archive/c/k/Two.cat found by its name"},
             Row{R"($GONE\None.cat)", "- nothing says what $GONE stands for"},
             Row{R"($ROOT\None.cat)", "- there is no such file"},
             Row{R"($ROOT\link to file)", "root/link to file"},
             Row{R"($ROOT\pkg)", "- there is no such file"},
             Row{R"($ROOT\pipe)", "- there is no such file"},
             Row{R"($ROOT\link to device)", "- there is no such file"},
             Row{"/dev/zero", "- there is no such file"},
             Row{"$ROOT", "- it names no file"},
         }) {
        EXPECT_EQ(locate(row.name), row.expected) << row.name;
    }
    ::unsetenv("UNIT_TEST_FOLDER");
}

// As the imports of an archive share the folders that one of them has listed.
TEST_F(Locator, FoldersAreListedOnce) {
    put("Old.cat", "");
    units::UnitLocator first({}, {});
    const auto found = [&](units::UnitLocator& locator, std::string_view name) {
        return locator.locate(units::parseUnitName(name), folder, folder).file.has_value();
    };
    EXPECT_TRUE(found(first, "Old.cat"));
    EXPECT_TRUE(first.takeListed().empty()) << "it is there by its name";
    EXPECT_TRUE(found(first, "OLD.cat"));
    const std::vector<std::filesystem::path> listed = first.takeListed();
    EXPECT_EQ(listed, std::vector<std::filesystem::path>{folder});
    units::UnitLocator second({}, {});
    second.list(listed);
    put("New.cat", "");
    EXPECT_TRUE(found(second, "old.CAT"));
    EXPECT_TRUE(found(second, "New.cat")) << "names as they are written are searched anew";
    EXPECT_FALSE(found(second, "new.cat"));
    EXPECT_TRUE(second.takeListed().empty());
}

TEST(UnitName, IsTakenApart) {
    struct Row {
        const char* text;
        const char* expected;
    };
    for (const Row& row :
         {Row{R"($CURDIR\sub\a.cat)", "$CURDIR[sub][a.cat]"}, Row{"$X/a/b.cat", "$X[a][b.cat]"},
          Row{R"(C:\models\a.cat)", "/[models][a.cat]"}, Row{"/abs//a.cat", "/[abs][a.cat]"},
          Row{R"(\\server\share\a.cat)", "/[server][share][a.cat]"}, Row{R"(.\..\a$.cat)", "[..][a$.cat]"},
          Row{R"(a\$b\C:)", "[a][$b][C:]"}, Row{"$", ""}, Row{R"($X\)", "$X"}}) {
        const units::UnitName name = units::parseUnitName(row.text);
        std::string shown = (name.symbol.empty() ? "" : "$" + name.symbol) + (name.isAbsolute ? "/" : "");
        for (const std::string& part : name.parts) {
            shown += "[" + part + "]";
        }
        EXPECT_EQ(shown, row.expected) << row.text;
    }
}

} // namespace
