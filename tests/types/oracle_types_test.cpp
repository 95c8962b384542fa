// Declared types as Oracle spells them.

#include "support/LogicalView.h"
#include "types/OracleTypes.h"

#include <gtest/gtest.h>

#include <string>

using rose::retrieveDataTypeInfo;

namespace {

struct SpellingRow {
    const char* text;
    const char* dataType;
    int length;
    int scale;
};

constexpr SpellingRow spellings[] = {
    {"INTEGER", "SQL_INTEGER", 0, 0},
    {"SMALLINT", "SQL_SMALLINT", 0, 0},
    {"FLOAT", "SQL_REAL", 0, 0},
    {"DECIMAL(8,3)", "SQL_NUMERIC", 8, 3},
    {"NUMBER(10,2)", "SQL_NUMERIC", 10, 2},
    {"NUMBER", "SQL_NUMERIC", 0, 0},
    {"ROWID", "SQL_VARCHAR", 0, 0},
    {"CHARACTER", "SQL_CHAR", 0, 0},
    {"CHAR(10)", "SQL_CHAR", 10, 0},
    {"VARCHAR", "SQL_VARCHAR", 0, 0},
    {"VARCHAR2(40)", "SQL_VARCHAR", 40, 0},
    {"LONG VARCHAR", "SQL_LONGVARCHAR", 0, 0},
    {"DATE", "SQL_DATE", 0, 0},
    {"LONG RAW", "SQL_LONGVARBINARY", 0, 0},
    {"LONG", "SQL_VARCHAR", 0, 0},
    {"RAW MLSLABEL", "SQL_VARCHAR", 0, 0},
    {"RAW", "SQL_BINARY", 0, 0},
    {"MLSLABEL", "SQL_VARCHAR", 0, 0},
    // The name must be spelt exactly so.
    {"varchar2(40)", "undefined", 40, 0},
    {"VARCHAR2 (40)", "undefined", 40, 0},
    {"VARCHAR3", "undefined", 0, 0},
    {" DATE", "undefined", 0, 0},
    {"", "undefined", 0, 0},
    // Numbers end at the first character that is none; a later "(" or "," counts in place of an earlier one.
    {"NUMBER( 10 , -2 )", "SQL_NUMERIC", 10, -2},
    {"NUMBER(x,y)", "SQL_NUMERIC", 0, 0},
    {"NUMBER(10", "SQL_NUMERIC", 10, 0},
    {"NUMBER(1(2,3,4)", "SQL_NUMERIC", 2, 4},
    {"NUMBER,5", "SQL_NUMERIC", 0, 5},
    {"NUMBER)(7)", "SQL_NUMERIC", 7, 0},
    {"(5)", "undefined", 5, 0},
};

TEST(OracleTypes, AreTakenApart) {
    for (const SpellingRow& row : spellings) {
        SCOPED_TRACE(row.text);
        int length = -1;
        int scale = -1;
        EXPECT_STREQ(retrieveDataTypeInfo(row.text, length, scale), row.dataType);
        EXPECT_EQ(length, row.length);
        EXPECT_EQ(scale, row.scale);
    }
    int length = -1;
    int scale = -1;
    EXPECT_STREQ(retrieveDataTypeInfo(nullptr, length, scale), "undefined");
    EXPECT_EQ(length + scale, 0);
    const std::string longText = std::string(1000, 'X') + "(12)";
    EXPECT_STREQ(retrieveDataTypeInfo(longText.c_str(), length, scale), "undefined");
    EXPECT_EQ(length, 12);
}

constexpr LogicalViewRow models[] = {
    {"without a declared type there is none", "(object Class \"A\"\n", "\n"},
    {"one type for each text, derived from the base of its logical name", R"~(
(object Class "A"
object ClassAttribute "a" type "VARCHAR2(40)"
object ClassAttribute "b" type "VARCHAR2(40)"
object ClassAttribute "c" type "NUMBER(10,2)"
object ClassAttribute "d" type "Money"
object ClassAttribute "e" type "RAW"
)~",
     R"~(
type Money: undefined (from undefined, physical name Money, user-defined)
type NUMBER(10,2): SQL_NUMERIC(10,2) (from number, physical name NUMBER(10,2), user-defined)
type RAW: SQL_BINARY (from binary, physical name RAW, user-defined)
type VARCHAR2(40): SQL_VARCHAR(40) (from char, physical name VARCHAR2(40), user-defined)
base type binary: SQL_BINARY
base type char: SQL_CHAR
base type number: SQL_NUMERIC
base type undefined: undefined
)~"},
    {"a text that is the name of a base type is that type", R"~(
(object Class "A"
object ClassAttribute "a" type "char"
object ClassAttribute "b"
)~",
     R"~(
base type char: SQL_CHAR
base type int: SQL_INTEGER
)~"},
    {"a logical name beyond the five gets a base type of its own, once", R"~(
(object Class "A"
object ClassAttribute "a" type "DATE"
object ClassAttribute "b" type "DATE(1)"
)~",
     R"~(
type DATE: SQL_DATE (from date, physical name DATE, user-defined)
type DATE(1): SQL_DATE(1) (from date, physical name DATE(1), user-defined)
base type date: SQL_DATE
)~"},
    {"a base type stays that was referred to when its turn came, and the type that referred to it goes", R"~(
(object Class "A"
(object Operation "f" result "zoo" result "int"
)~",
     R"~(
base type int: SQL_INTEGER
base type undefined: undefined
)~"},
    {"both go when the type has its turn first", R"~(
(object Class "A"
(object Operation "f" result "Zoo" result "int"
)~",
     R"~(
base type int: SQL_INTEGER
)~"},
    {"what is attached to nothing but its type keeps no type", R"~(
(object Class "A"
 (object Parameter "of nothing" type "Zoo"
object ClassAttribute "a" type "int"
object ClassAttribute "a" type "Zoo"
)~",
     R"~(
base type int: SQL_INTEGER
)~"},
    {"the values of an enumeration go", R"~(
(object Class "E") (value Text "{Red,Green}")
(object Class "A"
(object Operation "f" result "E"
)~",
     R"~(
type E: undefined (from undefined, physical name E, user-defined)
base type undefined: undefined
)~"},
};

TEST(OracleTypes, ReplaceTheDeclaredOnes) {
    expectTypes(models, {.types = "Oracle 7.x & 8"});
}

} // namespace
