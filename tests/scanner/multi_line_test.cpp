#include "InputText.h"
#include "scanner/ValueReaders.h"

#include <gtest/gtest.h>

#include <optional>

namespace rose::test {
namespace {

using namespace std::string_literals;

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
