#include "text/escape.h"
#include "text/utf8.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

struct Row {
    std::string_view text;
    std::string_view expected;
};

// Each invalid sequence is the longest beginning of a valid one, as in the tables of the Unicode standard.
TEST(Utf8, RepairsEachInvalidSequence) {
    constexpr Row rows[] = {
        {"", ""},
        {"a\0b"sv, "a\0b"sv},
        {"\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x8C\xB8", "\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x8C\xB8"},
        {"\xE9t\xE9", "\uFFFDt\uFFFD"},
        {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", "\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64", "\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd"},
        {"\xEF\xBF\xBD", "\uFFFD"}, // the replacement character itself is valid
    };
    for (const Row& row : rows) {
        EXPECT_EQ(text::repairedUtf8(row.text), row.expected) << row.text;
        EXPECT_EQ(text::isValidUtf8(row.text), row.text == row.expected) << row.text;
    }
}

TEST(PrintableText, SpellsOutWhatDrivesATerminal) {
    constexpr Row rows[] = {
        {"Order \xE4\xB8\xAD <<x>> \\ \"", "Order \xE4\xB8\xAD <<x>> \\ \""},
        {"a\nb\rc\td", R"(a\nb\rc\td)"},
        {"\0\x1B[31m\x7F"sv, R"(\x00\x1b[31m\x7f)"},
        {"\u009B2J\u0085", R"(\u{9b}2J\u{85})"}, // C1 controls in UTF-8
        {"caf\xE9\x9B", R"(caf\xe9\x9b)"},       // bytes of another encoding
        {"\u202Eabc\u2066\u2028", R"(\u{202e}abc\u{2066}\u{2028})"},
        {"\uFEFFa\u200Db", "\\u{feff}a\u200Db"}, // joiners belong to words
    };
    for (const Row& row : rows) {
        EXPECT_EQ(text::printableText(row.text), row.expected);
    }
}

TEST(JsonText, EscapesWhatDrivesATerminal) {
    struct JsonRow {
        std::string_view text;
        std::string_view quoted;
        bool isSafe;
    };
    constexpr JsonRow rows[] = {
        {"a\"b\\c\n\x1B\0"sv, R"("a\"b\\c\n\u001B\u0000")", true}, // every JSON writer escapes these
        {"\x7F", R"("\u007F")", false},
        {"\u009B2J\u009F\u00A0", "\"\\u009B2J\\u009F\u00A0\"", false},
        {"\u202Eabc\uFEFF", R"("\u202Eabc\uFEFF")", false},
        {"caf\xE9 \"x\"", "\"caf\uFFFD \\\"x\\\"\"", false},
        {"\xF0\x9F\x8C\xB8", "\"\xF0\x9F\x8C\xB8\"", true},
    };
    for (const JsonRow& row : rows) {
        EXPECT_EQ(text::quotedJsonText(row.text), row.quoted);
        EXPECT_EQ(text::isSafeJsonText(row.text), row.isSafe) << row.quoted;
    }
}

} // namespace
