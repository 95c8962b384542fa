#include "units/UnitName.h"

#include <gtest/gtest.h>

namespace {

std::string shown(std::string_view text) {
    const units::UnitName name = units::parseUnitName(text);
    std::string result = name.symbol.empty() ? "" : "$" + name.symbol;
    result += name.isAbsolute ? "/" : "";
    for (const std::string& part : name.parts) {
        result += "[" + part + "]";
    }
    return result;
}

TEST(UnitName, IsTakenApart) {
    struct Row {
        const char* text;
        const char* expected;
    };
    for (const Row& row : {
             Row{"a.cat", "[a.cat]"},
             Row{R"($CURDIR\sub\a.cat)", "$CURDIR[sub][a.cat]"},
             Row{"$X/a/b.cat", "$X[a][b.cat]"},
             Row{R"(C:\models\a.cat)", "/[models][a.cat]"},
             Row{R"(\\server\share\a.cat)", "/[server][share][a.cat]"},
             Row{"/abs//a.cat", "/[abs][a.cat]"},
             Row{R"(.\..\a$.cat)", "[..][a$.cat]"},
             Row{R"(a\$b\C:)", "[a][$b][C:]"},
             Row{"$", ""},
             Row{R"($X\)", "$X"},
             Row{"", ""},
         }) {
        EXPECT_EQ(shown(row.text), row.expected) << row.text;
    }
}

} // namespace
