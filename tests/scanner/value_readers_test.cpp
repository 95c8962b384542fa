#include "InputText.h"
#include "scanner/ValueReaders.h"

#include <gtest/gtest.h>

#include <optional>

namespace rose::test {
namespace {

using namespace std::string_literals;

using Text = std::optional<std::string>;

Text textOf(const Value& value) {
    return value ? Text(value.text()) : std::nullopt;
}

struct ReaderRow {
    const char* text;
    Text value;     // of getValue
    Text reference; // of getValue3 and getValue4
};

TEST(ValueReaders, TakeWhatFollowsTheLastDelimiterOrReferenceMark) {
    const ReaderRow rows[] = {
        {"\tstereotype \"Interface", "Interface", "Interface"},
        {"type \"", "", ""},
        {"", std::nullopt, std::nullopt},
        {"a \"b\" \"c", "c", "c"},
        {"\tclient @12", std::nullopt, "12\t"},
        {"\tclient @", std::nullopt, "\t"},
        {"\tclient \"name@7", "name@7", "name@7"},
    };
    for (const ReaderRow& row : rows) {
        EXPECT_EQ(textOf(getValue(row.text, '"')), row.value) << row.text;
        EXPECT_EQ(textOf(getValue3(row.text, '"')), row.reference) << row.text;
        EXPECT_EQ(textOf(getValue4(row.text, '"')), row.reference) << row.text;
    }
    EXPECT_EQ(textOf(getValue("a|b\"c", '|')), "b\"c") << "another delimiter";
}

struct ViewRow {
    const char* text;
    Text value;
    long viewNumber; // -1: left alone
};

TEST(ValueReaders, TakeTheNameAndNumberOfAClassView) {
    const ViewRow rows[] = {
        {"(object ClassView \"Class\" \"Logical View::Customer\" @3", "Logical View::Customer", 3},
        {"\"Class\" \"A\" @ -12x", "A", -12},
        {"\"Class\" \"A@5\" \"@6", "A@5", 6},
        {"\"Class\" \"A@5\"", "A@5", 5},
        {"\"Class\" \"\" none", "", -1},
        {"\"Class\" \"A @5", std::nullopt, -1},
        {"\"Class\" @5", std::nullopt, -1},
    };
    for (const ViewRow& row : rows) {
        long viewNumber = -1;
        EXPECT_EQ(textOf(getValue5(row.text, '"', &viewNumber)), row.value) << row.text;
        EXPECT_EQ(viewNumber, row.viewNumber) << row.text;
    }
}

const std::string longest(longestMultiLine, 'x');

struct LinesRow {
    std::string input;
    std::optional<std::string> value;
    std::string rest;
};

const LinesRow linesRows[] = {
    {"\n|First\n|Second\n\t\t\n", "First\nSecond", "\n\t\t\n"},
    {"\n|A\n|\n|B\nC", "A\n\nB", "\nC"},
    {"\n|a|b\n||c\n |d", "a|b\n|c", "\n |d"},
    {"\n|A\r\n|B\r\nC", "A\r\nB\r", "\nC"},
    {"\n|", "", ""},
    {"\n|A\0B\n|C\nD"s, "A", "\nD"},
    {"\nA", std::nullopt, "\nA"},
    {"\n\n|A", std::nullopt, "\n\n|A"},
    {"", std::nullopt, ""},
    {"\0|"s, std::nullopt, "\0|"s},
    {"\n\0|"s, std::nullopt, "\n\0|"s},
    {"\n|" + longest + "\n.", longest, "\n."},
    {"\n|" + longest + "yz\n|z\n.", longest, "\n."},
    {"\n|" + longest.substr(1) + "\n|y\n.", longest.substr(1) + "\n", "\n."},
    {"\n|" + longest.substr(2) + "\n|yz\n.", longest.substr(2) + "\ny", "\n."},
};

TEST(MultiLine, ReadsTheBarLinesAndStopsAtTheNewlineBehindThem) {
    const std::string match = "\tlabel \t";
    for (const LinesRow& row : linesRows) {
        for (const std::size_t size : {1, 2, 3, 5, 8192}) {
            const InputText input(match + row.input, {.bufferSize = size, .readSize = size});
            while (scannerInput.limit() - scannerInput.cursor() < static_cast<std::ptrdiff_t>(match.size())) {
                scannerInput.refill(scannerInput.cursor());
            }
            scannerInput.beginMatch(scannerInput.cursor(), scannerInput.cursor() + match.size());
            const Value value = getMultiLine();
            ASSERT_EQ(static_cast<bool>(value), row.value.has_value()) << row.input;
            if (value) {
                EXPECT_EQ(value.text(), *row.value) << row.input;
            }
            EXPECT_EQ(yytext, match) << row.input;
            scannerInput.endMatch();
            EXPECT_EQ(InputText::rest(), row.rest) << row.input;
        }
    }
}

} // namespace
} // namespace rose::test
