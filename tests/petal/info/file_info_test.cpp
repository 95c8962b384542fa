#include "petal/info/gatherFileInfo.h"
#include "petal/info/infoForms.h"

#include "notation/ByteSource.h"

#include <gtest/gtest.h>

namespace {

using petal::FileInfo;

FileInfo infoOf(std::string_view text) {
    notation::MemorySource source(text, 100);
    return petal::gatherFileInfo(source);
}

std::string textOf(std::string_view text) {
    return petal::infoText("m", infoOf(text));
}

/// The part of a text that begins with `label`, up to the next line that is indented as little.
std::string part(const std::string& text, const std::string& label) {
    const std::size_t start = text.find("  " + label + ":");
    std::size_t end = start == std::string::npos ? start : text.find('\n', start);
    while (end != std::string::npos && text.compare(end, 5, "\n    ") == 0) {
        end = text.find('\n', end + 1);
    }
    return start == std::string::npos ? "(none)" : text.substr(start + 2, end - start - 2);
}

TEST(FileInfo, TellsTheHeader) {
    struct Row {
        std::string_view header;
        const char* version;
        const char* written;
        const char* charSet;
    };
    constexpr Row rows[] = {
        {"version 40 _written \"Rose 4.0\" charSet 0", "40 (Rose 4.0)", "Rose 4.0", "0 (windows-1252)"},
        {"version 50 charSet 134 _written \"\xD6\xD0\"", "50 (Rose 2003.06.12 and later)", "\xE4\xB8\xAD",
         "134 (windows-936)"},
        {"version 41 charSet 130 _written \"a\\\"\x1B[1m\"", "41 (unknown release)", "a\"\\x1b[1m", "130 (unknown)"},
        {"_written\n|Rose\n|4.0\n", "none", "Rose\\n4.0", "none"},
        {"version \"42\" charSet 99999999999999999999", "none", "unknown", "none"},
        {"charSet 4294967296", "none", "unknown", "4294967296 (unknown)"},
        {"k (object Petal version 42 charSet 128)", "none", "unknown", "none"},
        {"(nested charSet 1) charSet 134 version 5x", "none", "unknown", "134 (windows-936)"},
        {R"(_written "a ) charSet 7 \" ( b" charSet 204)", "none", R"(a ) charSet 7 " ( b)", "204 (windows-1251)"},
        {"charSet 134 charSetX 5 _charSet 6 version 42 version \"50\"", "none", "unknown", "134 (windows-936)"},
        {"charSet 134) (charSet 128", "none", "unknown", "134 (windows-936)"},
    };
    for (const Row& row : rows) {
        const std::string text = textOf("(object Petal " + std::string(row.header) + ")(object Design version 1)");
        EXPECT_EQ(part(text, "version"), std::string("version: ") + row.version) << row.header;
        EXPECT_EQ(part(text, "written by"), std::string("written by: ") + row.written) << row.header;
        EXPECT_EQ(part(text, "charSet"), std::string("charSet: ") + row.charSet) << row.header;
    }
}

TEST(FileInfo, CountsAndListsWhatIsInTheFile) {
    const std::string text = textOf(R"((object Petal charSet 134)
(object Design "Logical View" is_unit TRUE is_loaded TRUE
  units (list unit_reference_list
    (object Class_Category "java" is_loaded FALSE is_unit TRUE file_name "$X\\a\\b.cat"
      inner (object Class_Category "second" is_unit TRUE is_loaded TRUE))
    (object Class_Category "third" file_name "c.cat" is_unit FALSE)
    (object SubSystem is_unit TRUE))
  views (list x (object ClassDiagram "Main") (object State_Diagram ")"
                                    "\xD6\xD0"
                                    R"(") (object UseCaseDiagram) (object DiagramItem "d")))
)");
    EXPECT_EQ(part(text, "objects"), "objects: 10\n    1 ClassDiagram\n    3 Class_Category\n    1 Design\n"
                                     "    1 DiagramItem\n    1 Petal\n    1 State_Diagram\n    1 SubSystem\n"
                                     "    1 UseCaseDiagram");
    EXPECT_EQ(part(text, "properties"), "properties: 14");
    EXPECT_EQ(part(text, "controlled units"), "controlled units: 3\n"
                                              "    Class_Category java (line 4, not loaded): $X\\a\\b.cat\n"
                                              "    Class_Category second (line 5, loaded): no file named\n"
                                              "    SubSystem (line 7, not loaded): no file named");
    EXPECT_EQ(part(text, "diagrams"),
              "diagrams: 3\n    ClassDiagram Main\n    State_Diagram \xE4\xB8\xAD\n    UseCaseDiagram");
}

TEST(FileInfo, TellsOfDamage) {
    EXPECT_EQ(part(textOf("(object Petal)(object A)"), "damages"), "damages: 0");
    EXPECT_EQ(part(textOf("(object Petal)\n(object A 1)"), "damages"),
              "damages: 1\n    line 2, column 11: no property's name stands in front of this value");
    std::string many = "(object Petal";
    for (std::size_t count = 0; count < petal::mostDamages + 5; ++count) {
        many += " 1";
    }
    const FileInfo info = infoOf(many + ")");
    EXPECT_EQ(info.damageCount, petal::mostDamages + 5);
    EXPECT_EQ(info.damages.size(), petal::mostDamages);
    EXPECT_TRUE(part(petal::infoText("m", info), "damages").ends_with("\n    ..."));
}

TEST(FileInfo, KindsWithoutEndTakeNoMemory) {
    std::string text = "(object Petal)";
    for (std::size_t kind = 0; kind < petal::mostKinds + 10; ++kind) {
        text += "(object K" + std::to_string(kind) + ")";
    }
    const FileInfo info = infoOf(text);
    EXPECT_EQ(info.objects.size(), petal::mostKinds + 1);
    EXPECT_EQ(info.objects.at(petal::otherKinds), 11U);
}

TEST(FileInfo, AModelBeginsWithItsHeader) {
    struct Row {
        std::string_view text;
        bool expected;
    };
    constexpr Row rows[] = {
        {"\n(object Petal)", true},      {"\xEF\xBB\xBF(object Petal", true},
        {"x (object Petal)", true},      {"(object Design)", false},
        {"(list Petal)", false},         {"k (list (object Petal))", false},
        {"<a>(object Petal)</a>", true}, {"", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(infoOf(row.text).isModel, row.expected) << row.text;
    }
}

} // namespace
