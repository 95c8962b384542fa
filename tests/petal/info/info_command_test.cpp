#include "petal/Shell.h"

namespace {

using namespace std::string_literals;

class Info : public Shell {
protected:
    Info() : Shell("/missing.so") { put("m", "(object Petal\n version 42)\n(object Design \"\x1B[1m\")\n"); }
};

constexpr const char* told = "  version: 42 (Rose 98/98i)\n  written by: unknown\n  charSet: none\n  objects: 2\n"
                             "    1 Design\n    1 Petal\n  properties: 1\n  controlled units: 0\n  diagrams: 0\n"
                             "  damages: 0\n";

TEST_F(Info, TellsOfFilesAndPipesWithoutABridge) {
    EXPECT_EQ(run("$petal info m").output, std::string("m\n") + told);
    EXPECT_EQ(run("cat m | $petal info -").output, std::string("-\n") + told);
    EXPECT_EQ(run("cat m | $petal info /dev/stdin ./m").output, std::string("/dev/stdin\n") + told + "./m\n" + told);
    put("caf\xE9\n", get("m"));
    EXPECT_EQ(run("$petal info caf*").output, std::string("caf\\xe9\\n\n") + told);
}

TEST_F(Info, JsonTellsTheSame) {
    put("u", "(object Petal charSet 0 _written \"a\x01\")(object A u (object B \"\xE9\" is_unit TRUE file_name "
             "\"x\\\\y\" is_loaded TRUE) d (object ClassDiagram \"D\"");
    EXPECT_EQ(run("$petal info --json u").output, R"([
  {
    "file": "u",
    "written": "a\u0001",
    "charSet": 0,
    "encoding": "windows-1252",
    "objects": 4,
    "objectsByKind": {
      "A": 1,
      "B": 1,
      "ClassDiagram": 1,
      "Petal": 1
    },
    "properties": 7,
    "controlledUnits": [
      {
        "kind": "B",
        "name": "é",
        "file": "x\\y",
        "loaded": true,
        "line": 1,
        "column": 51,
        "offset": 50
      }
    ],
    "diagrams": [
      {
        "kind": "ClassDiagram",
        "name": "D"
      }
    ],
    "damages": 1,
    "firstDamages": [
      {
        "kind": "truncated",
        "text": "the file ends too early: closing parentheses are missing: 2, the innermost for what begins at line 1, column 113",
        "line": 1,
        "column": 137,
        "offset": 136
      }
    ]
  }
]
)");
    const Ended mixed = run("$petal info --json missing m");
    EXPECT_EQ(mixed.status, 5);
    EXPECT_EQ(mixed.output.find(R"([
  {
    "file": "missing",
    "error": "cannot read 'missing': No such file or directory"
  },
  {
    "file": "m",
    "version": 42,
    "release": "98/98i",)"),
              0U)
        << mixed.output;
}

TEST_F(Info, JsonEscapesKinds) {
    put("k", "(object Petal)(object \\u)");
    const std::string output = run("$petal info --json k").output;
    EXPECT_NE(output.find("\"Petal\": 1,\n      \"\\\\u\": 1\n"), std::string::npos) << output;
}

struct Refusal {
    std::string contents;
    const char* errors;
};

TEST_F(Info, SaysWhatToDoAboutWhatIsNoModel) {
    const Refusal rows[] = {
        {"", "petal: 'f' is no model file\npetal: It is empty."},
        {"<xml/>", "It is XML"},
        {"\xFF\xFE(\0o\0"s, "It is in UTF-16. Convert it"},
        {"(\0o\0b\0"s, "It is in UTF-16. Convert it"},
        {"\x1F\x8B\x08", "Unpack it"},
        {"(object Design)", "A model file begins with \"(object Petal\"."},
        {std::string(100'000, '\0'), "A model file begins with"},
    };
    for (const Refusal& row : rows) {
        put("f", row.contents);
        const Ended ended = run("$petal info f");
        EXPECT_EQ(ended.status, 1) << row.errors;
        EXPECT_NE(ended.errors.find(row.errors), std::string::npos) << ended.errors;
        EXPECT_EQ(ended.output, "");
    }
}

TEST_F(Info, GoesOnBehindWhatCannotBeRead) {
    const Ended ended = run("$petal info . m missing/x; echo $?; $petal info m >/dev/full");
    EXPECT_EQ(ended.output, std::string("m\n") + told + "5\n");
    EXPECT_EQ(ended.errors, "petal: cannot read '.': Is a directory\npetal: Name the files in that folder.\n"
                            "petal: cannot read 'missing/x': No such file or directory\n"
                            "petal: Check the name of the file.\npetal: 2 of 3 files are not told of\n"
                            "petal: cannot write standard output: No space left on device\n"
                            "petal: Free some space, or write to another place with -o.\n");
    EXPECT_EQ(run("$petal info").status, 2);
}

} // namespace
