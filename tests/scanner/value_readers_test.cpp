#include "scanner/ValueReaders.h"

#include <gtest/gtest.h>

#include <optional>

namespace rose {
namespace {

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

} // namespace
} // namespace rose
