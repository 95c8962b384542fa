#include "support/LogicalView.h"

#include <gtest/gtest.h>

namespace {

struct Enumerating {
    const char* text;
    const char* values; // as the outline shows them, or nullptr where the class stays
};

constexpr Enumerating enumerations[] = {
    {"{Red,Green=2,Blue}", "Red = Red,Green = 2,Blue = Blue,"},
    {"enum Colour { Red , Blue } ;", " Red  =  Red , Blue  =  Blue ,"},
    {"{A,B", "A = A,B = B,"},
    {"{A,B},C}", "A = A,B} = B},C = C,"},
    {"{A}B,C}D}", "A}B = A}B,C = C,"},
    {"{A=1=2,B==}", "A = 1=2,B = =,"},
    {"{A=,B}", "A = A,B = B,"},
    {"{,B,}", ",B = B,,"},
    {"{=1,B}", " = 1,B = B,"},
    {"{A,A}", "A = A,A = A,"},
    {"{{A,B}", "{A = {A,B = B,"},
    {"", nullptr},
    {"Red,Green", nullptr},
    {"{Only}", nullptr},
    {"{}", nullptr},
    {"a,{b,c}", nullptr},
};

/// The values of the type in the outline, each with a comma behind it.
std::string valuesIn(const std::string& types) {
    constexpr std::string_view mark = "\n  value ";
    std::string values;
    for (std::size_t at = types.find(mark); at != std::string::npos; at = types.find(mark, at + 1)) {
        const std::size_t begin = at + mark.size();
        values += types.substr(begin, types.find('\n', begin) - begin) + ",";
    }
    return values;
}

TEST(Enumerations, BecomeTypes) {
    for (const Enumerating& row : enumerations) {
        SCOPED_TRACE(row.text);
        const ImportedModel imported =
            importLogicalView(std::string("(object Class \"Colour\") (value Text \"") + row.text +
                              "\")\n(object Class \"A\"\n(object ClassAttribute \"a\" type \"Colour\"\n");
        const bool isType = row.values != nullptr;
        EXPECT_EQ(valuesIn(typesOf(imported)), isType ? row.values : "");
        EXPECT_EQ(packagesOf(imported), std::string("\npackage Logical View\n") + (isType ? "" : "  class Colour\n") +
                                            "  class A\n    - a: Colour\n");
    }
}

constexpr LogicalViewRow extended[] = {
    {"a type of the name is enumerated itself, and again", R"(
(object Class "A"
(object ClassAttribute "a" type "Logical View::Colour"
(object Class "Colour") (value Text "{A,B=2}")
(object Class "Colour") (value Text "{C,D}")
)",
     R"(
type Colour: SQL_INTEGER (from int, physical name INTEGER, user-defined)
  value A = A
  value B = 2
  value C = C
  value D = D
base type int: SQL_INTEGER
)"},
};

TEST(Enumerations, ExtendTypes) {
    expectTypes(extended);
    EXPECT_NE(importLogicalView(extended[0].logicalView).json().find("\"position\": 3\n"), std::string::npos);
}

} // namespace
