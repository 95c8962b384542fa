#include "Shell.h"

#include <algorithm>

namespace {

using namespace std::string_literals;

class Info : public Shell {
protected:
    Info() : Shell("/missing.so") { // it needs no bridge
        put("m", "(object Petal\n version 42)\n(object Design \"\x1B[1m\")\n");
    }
};

constexpr const char* told = "  version: 42 (Rose 98/98i)\n  written by: unknown\n  charSet: none\n  objects: 2\n"
                             "    1 Design\n    1 Petal\n  properties: 1\n  controlled units: 0\n  diagrams: 0\n"
                             "  damages: 0\n";

TEST_F(Info, TellsTheSameInBothForms) {
    put("u", R"((object Petal charSet 134 _written "a)"
             "\x01\")\n"
             R"((object Design "Logical View" is_unit TRUE is_loaded TRUE
  units (list unit_reference_list
    (object Class_Category "java" is_loaded FALSE is_unit TRUE file_name "$X\\a\\b.cat"
      inner (object Class_Category "second" is_unit TRUE is_loaded TRUE))
    (object Class_Category "third" file_name "c.cat" is_unit FALSE)
    (object SubSystem is_unit TRUE))
  views (list x (object ClassDiagram "Main") (object \u)
    (object State_Diagram ")"
             "\xD6\xD0\")");
    EXPECT_EQ(run("$petal info u").output, R"(u
  version: none
  written by: a\x01
  charSet: 134 (windows-936)
  objects: 9
    1 ClassDiagram
    3 Class_Category
    1 Design
    1 Petal
    1 State_Diagram
    1 SubSystem
    1 \u
  properties: 15
  controlled units: 3
    Class_Category java (line 4, not loaded): $X\a\b.cat
    Class_Category second (line 5, loaded): no file named
    SubSystem (line 7, not loaded): no file named
  diagrams: 2
    ClassDiagram Main
    State_Diagram 中
  damages: 1
    line 9, column 32: the file ends early: 2 closing parentheses are missing; the innermost open construct starts at line 8, column 9
)");
    const Ended json = run("$petal info --json missing u m | tr -d '\\n' | sed 's/  */ /g'");
    EXPECT_EQ(
        json.output.substr(0, json.output.find(" }, { \"file\": \"m\"")),
        R"([ { "file": "missing", "error": "cannot read 'missing': No such file or directory" }, { "file": "u",)"
        R"( "written": "a\u0001", "charSet": 134, "encoding": "windows-936", "objects": 9, "objectsByKind": {)"
        R"( "ClassDiagram": 1, "Class_Category": 3, "Design": 1, "Petal": 1, "State_Diagram": 1, "SubSystem": 1,)"
        R"( "\\u": 1 }, "properties": 15, "controlledUnits": [ { "kind": "Class_Category", "name": "java",)"
        R"( "file": "$X\\a\\b.cat", "line": 4, "column": 5, "offset": 137 }, { "kind": "Class_Category",)"
        R"( "name": "second", "loaded": true, "line": 5, "column": 13, "offset": 233 }, { "kind": "SubSystem",)"
        R"( "line": 7, "column": 5, "offset": 367 } ], "diagrams": [ { "kind": "ClassDiagram", "name": "Main" }, {)"
        R"( "kind": "State_Diagram", "name": "中" } ], "damages": 1, "firstDamages": [ { "kind": "truncated",)"
        R"( "text": "the file ends early: 2 closing parentheses are missing; the innermost open construct starts at)"
        R"( line 8, column 9", "line": 9, "column": 32, "offset": 488 } ])");
    EXPECT_TRUE(has(json.output, R"({ "file": "m", "version": 42, "release": "98/98i", "objects": 2,)"));
}

TEST_F(Info, TellsTheHeader) {
    const std::pair<std::string_view, std::string> rows[] = {
        {"version 40 _written \"Rose 4.0\" charSet 0", "40 (Rose 4.0)/Rose 4.0/0 (windows-1252)"},
        {"version 41 charSet 130 _written \"\xE9\\\"\x1B[1m\"", "41 (unknown release)/é\"\\x1b[1m/130 (unknown)"},
        {"_written\n|Rose\n|4.0\n", "none/Rose\\n4.0/none"},
        {"version \"42\" charSet 99999999999999999999", "none/unknown/none"},
        {"charSet 4294967296", "none/unknown/4294967296 (unknown)"},
        {"k (object Petal version 42 charSet 128)", "none/unknown/none"},
        {"(nested charSet 1) charSet 134 version 5x", "none/unknown/134 (windows-936)"},
        {R"(_written "a ) charSet 7 \" ( b" charSet 204)", R"(none/a ) charSet 7 " ( b/204 (windows-1251))"},
        {"charSet 134 charSetX 5 _charSet 6 version 42 version \"50\"", "none/unknown/134 (windows-936)"},
        {"charSet 134) (charSet 128", "none/unknown/134 (windows-936)"}};
    for (const auto& [header, expected] : rows) {
        put("h", "(object Petal " + std::string(header) + ")(object Design version 1)");
        const std::string lines = run("$petal info h | sed -n '2,4s/^[^:]*: //p' | paste -sd/").output;
        EXPECT_EQ(lines, expected + "\n") << header;
    }
}

TEST_F(Info, TellsOfSoMuchOnly) {
    std::string text = "(object Petal";
    for (int number = 0; number < 2000; ++number) {
        text += " 1";
    }
    text += ")";
    for (int number = 0; number < 12'000; ++number) {
        text += "(object K" + std::to_string(number) + ")";
    }
    put("many", text);
    const std::string lines = run("$petal info many").output;
    EXPECT_TRUE(has(lines, "    2001 (others)\n")) << "kinds without end take no memory";
    EXPECT_TRUE(lines.ends_with("\n    ...\n")) << lines.substr(lines.size() - 100);
    EXPECT_EQ(std::ranges::count(lines.substr(lines.find("damages: 2000\n")), '\n'), 22);
    EXPECT_EQ(run("$petal info --json many | grep -c '\"kind\"'").output, "1000\n");
}

TEST_F(Info, AModelBeginsWithItsHeader) {
    for (const char* contents : {"\xEF\xBB\xBF(object Petal", "x (object Petal)", "<a>(object Petal)</a>"}) {
        put("m", contents);
        EXPECT_EQ(run("$petal info m").status, 0) << contents;
    }
    const std::pair<std::string, const char*> rows[] = {
        {"(object Design)", "A model file begins with \"(object Petal\"."},
        {"(list Petal)", "A model file begins with"},
        {"k (list (object Petal))", "A model file begins with"},
        {"", "petal: 'm' is not a model file\npetal: It is empty."},
        {"<xml/>", "It is XML"},
        {"(\0o\0b\0"s, "It is in UTF-16. Convert it"},
        {"\x1F\x8B\x08", "Unpack it"},
    };
    for (const auto& [contents, errors] : rows) {
        put("m", contents);
        expectRefusals("$petal info ", {{"m", 1, errors}});
    }
}

TEST_F(Info, GoesOnBehindWhatCannotBeRead) {
    const Ended ended = run("cat m | $petal info . - missing/x ./m; echo $?; $petal info m >/dev/full");
    EXPECT_EQ(ended.output, "-\n"s + told + "./m\n" + told + "5\n");
    EXPECT_EQ(ended.errors, "petal: cannot read '.': Is a directory\npetal: Name the files in that folder.\n"
                            "petal: cannot read 'missing/x': No such file or directory\n"
                            "petal: Check the name of the file.\npetal: 2 of 4 files could not be read\n"
                            "petal: cannot write standard output: No space left on device\n"
                            "petal: Free some space, or write to another place with -o.\n");
    put("caf\xE9\n", get("m"));
    EXPECT_EQ(run("cat m | $petal info /dev/stdin caf*").output, "/dev/stdin\n"s + told + "caf\\xe9\\n\n" + told);
}

} // namespace
