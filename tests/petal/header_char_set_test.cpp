#include "petal/headerCharSet.h"

#include "Folder.h"

#include <sys/stat.h>

namespace {

using petal::headerCharSet;

TEST(HeaderCharSet, IsTheNumberInTheHeaderObject) {
    struct Row {
        std::string_view head;
        std::optional<int> expected;
    };
    constexpr Row rows[] = {
        {"\n(object Petal\n    version    \t50\n    _written   \t\"Rose\"\n    charSet    \t134)\n", 134},
        {"\r\n(object Petal\r\n\tcharSet\t0)", 0},
        {"(object Petal charSet 128 version 42)", 128},
        {"(object Petal (nested charSet 1) charSet 2)", 2},
        {R"((object Petal _written "a ) charSet 7 \" ( b" charSet 204))", 204},
        {"(object Petal version 42)", std::nullopt},
        {"(object Petal version 42) charSet 134)", std::nullopt}, // not in the header
        {"(object Petal charSetX 5 XcharSet 6)", std::nullopt},
        {"(object Petal charSet)", std::nullopt},
        {"(object Petal charSet \"134\")", std::nullopt},
        {"(object Petal charSet 13x)", std::nullopt},
        {"(object Petal charSet 99999999999)", std::nullopt},
        {"(object Design charSet 134)", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(headerCharSet(row.head), row.expected) << row.head;
    }
}

TEST(HeaderCharSet, AHeaderCutAnywhereHasNone) {
    constexpr std::string_view whole = R"((object Petal _written "Rose \" (x" charSet 134))";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(headerCharSet(whole.substr(0, length)), std::nullopt) << length;
    }
    EXPECT_EQ(headerCharSet(whole), 134);
}

class ReadHead : public InFolder {};

TEST_F(ReadHead, TakesTheFirstBytesOfRegularFilesOnly) {
    EXPECT_EQ(petal::readHead(put("short", "abc")), "abc");
    EXPECT_EQ(petal::readHead(put("long", std::string(10000, 'x'))), std::string(petal::headLength, 'x'));
    EXPECT_EQ(petal::readHead(folder), "");
    EXPECT_EQ(petal::readHead(pathOf("missing")), "");
    ASSERT_EQ(::mkfifo(pathOf("pipe").c_str(), 0600), 0);
    EXPECT_EQ(petal::readHead(pathOf("pipe")), "") << "and does not wait for a writer";
}

} // namespace
