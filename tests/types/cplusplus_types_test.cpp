// Declared types as C++ spells them.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct SpellingRow {
    const char* text;
    const char* base;
    const char* dataType; // with the length, and that which follows it in the outline
};

constexpr SpellingRow spellings[] = {
    {"unsigned char", "int", "SQL_TINYINT (from int, physical name TINYINT"},
    {"unsigned int", "int", "SQL_INTEGER (from int, physical name INTEGER"},
    {"short", "int", "SQL_SMALLINT (from int, physical name SMALLINT"},
    {"signed short", "int", "SQL_INTEGER (from int, physical name INTEGER"},
    {"signed char", "int", "SQL_INTEGER (from int, physical name INTEGER"},
    {"long", "int", "SQL_INTEGER (from int, physical name INTEGER"},
    {"long double", "number", "SQL_NUMERIC (from number, physical name NUMERIC"},
    {"float", "number", "SQL_REAL (from number, physical name REAL"},
    {"char", "char", "SQL_CHAR (from char, physical name CHAR"},
    {"char[20][30]", "binary", "SQL_BINARY(20) (from binary, physical name BINARY(20)"},
    {"char[ 20]", "binary", "SQL_BINARY (from binary, physical name BINARY"},
    {"char[-20]", "binary", "SQL_BINARY (from binary, physical name BINARY"},
    {"char[20x]", "binary", "SQL_BINARY(20) (from binary, physical name BINARY(20)"},
    {"char[", "binary", "SQL_BINARY (from binary, physical name BINARY"},
    {"int[10]", "int", "SQL_INTEGER(10) (from int, physical name INTEGER(10)"},
    {"void", "binary", "SQL_VARBINARY (from binary, physical name VARBINARY"},
    {"register", "binary", "SQL_VARBINARY (from binary, physical name VARBINARY"},
    {"undefined", "undefined", "undefined (from undefined, physical name undefined"},
    {"Customer", "undefined", "undefined (from undefined, physical name Customer"},
    {"Customer[7]", "undefined", "undefined(7) (from undefined, physical name Customer[7]"},
    // What begins with a key is taken for it.
    {"intList", "int", "SQL_INTEGER (from int, physical name INTEGER"},
    {"doubleQueue", "number", "SQL_DOUBLE (from number, physical name DOUBLE"},
    {"shortcut", "int", "SQL_SMALLINT (from int, physical name SMALLINT"},
    {"character", "char", "SQL_CHAR (from char, physical name CHAR"},
    {"Character", "undefined", "undefined (from undefined, physical name Character"},
    {"unsigned", "undefined", "undefined (from undefined, physical name unsigned"},
};

TEST(CPlusPlusTypes, AreMappedByTheirSpelling) {
    for (const SpellingRow& row : spellings) {
        SCOPED_TRACE(row.text);
        const ImportedModel imported = importLogicalView(
            std::string("(object Class \"A\"\nobject ClassAttribute \"a\"\ntype \"") + row.text + "\"");
        const std::string types = typesOf(imported);
        const std::string line = std::string("\ntype ") + row.text + ": " + row.dataType + ", user-defined)\n";
        EXPECT_NE(types.find(line), std::string::npos) << types;
        EXPECT_NE(types.find(std::string("\nbase type ") + row.base + ": "), std::string::npos) << types;
        EXPECT_EQ(types.find("base type ", types.find("base type ") + 1), std::string::npos) << types;
    }
}

constexpr LogicalViewRow models[] = {
    {"without a declared type there is none", "(object Class \"A\"\n", "\n"},
    {"an enumeration is a text or a number by its first literal", R"(
(object Class "Colour") (value Text "{Red,Green=2}")
(object Class "Letter") (value Text "{A='a',B}")
(object Class "A"
object ClassAttribute "a" type "Colour"
(object Operation "f" result "Letter"
)",
     R"(
type Colour: SQL_INTEGER (from int, physical name INTEGER, user-defined)
  value Red = Red
  value Green = 2
type Letter: SQL_INTEGER (from int, physical name INTEGER, user-defined)
  value A = 'a'
  value B = B
base type int: SQL_INTEGER
)"},
    {"an enumeration that nothing uses goes, and leaves the base that it referred to when that had its turn", R"(
(object Class "Colour") (value Text "{Red,Green=2}")
(object Class "zone") (value Text "{North,South}")
)",
     R"(
base type int: SQL_INTEGER
)"},
    {"an attribute by reference has a type of its own; arguments and results have the plain one", R"(
(object Class "A"
object ClassAttribute "value" type "Customer" Containment "By Value"
object ClassAttribute "reference" type "Customer" Containment "By Reference"
(object Operation "f"
 (object Parameter "p") type "Order"
object ClassAttribute "order" type "Order" Containment "By Reference"
)",
     R"(
type Customer: undefined (from undefined, physical name Customer, user-defined)
type Customer: undefined (from undefined, physical name Customer, user-defined)
type Order: undefined (from undefined, physical name Order, user-defined)
type Order: undefined (from undefined, physical name Order, user-defined)
base type int: SQL_INTEGER
type int: SQL_INTEGER (from int, physical name INTEGER, user-defined)
base type undefined: undefined
)"},
    {"which a second one shares only if it is binary and without a length", R"(
(object Class "A"
object ClassAttribute "a" type "void" Containment "By Reference"
object ClassAttribute "b" type "void" Containment "By Reference"
object ClassAttribute "c" type "double" Containment "By Reference"
object ClassAttribute "d" type "double" Containment "By Reference"
object ClassAttribute "e" type "boolean[5]" Containment "By Reference"
object ClassAttribute "f" type "boolean[5]" Containment "By Reference"
object ClassAttribute "g" type "boolean" Containment "By Reference"
)",
     R"(
type SQL_BOOLEAN: SQL_BINARY (from binary, physical name BINARY, user-defined)
type SQL_BOOLEAN: SQL_BINARY (from binary, physical name BINARY, user-defined)
type SQL_BOOLEAN: SQL_BINARY (from binary, physical name BINARY, user-defined)
base type binary: SQL_BINARY
type binary: SQL_BINARY (from binary, physical name BINARY, user-defined)
base type number: SQL_NUMERIC
type number: SQL_NUMERIC (from number, physical name NUMERIC, user-defined)
type number: SQL_NUMERIC (from number, physical name NUMERIC, user-defined)
)"},
    {"a pointer to characters is binary already", R"(
(object Class "A"
object ClassAttribute "a" type "char*" Containment "By Reference"
)",
     R"(
base type binary: SQL_BINARY
type char*: SQL_BINARY (from binary, physical name BINARY, user-defined)
)"},
};

TEST(CPlusPlusTypes, ReplaceTheDeclaredOnes) {
    expectTypes(models);
}

} // namespace
