#include "support/InFolder.h"
#include "units/Assembly.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace {

using units::PieceMap;
using units::UnitTree;

std::string unitObject(const std::string& name, const std::string& file, const std::string& kind = "Class_Category") {
    return "(object " + kind + " \"" + name + "\" is_unit TRUE is_loaded FALSE file_name \"" + file + "\")";
}

std::string fileOf(const std::string& content, const std::string& header = "charSet 0") {
    return "(object Petal " + header + ")" + content;
}

constexpr const char* stateLetters = "fmurc"; // as in `UnitState`

class Assembling : public InFolder {
protected:
    UnitTree read(const std::string& name) {
        units::UnitLocator locator({}, {});
        return units::readUnitTree(pathOf(name), locator);
    }
    static std::string states(const UnitTree& tree) {
        std::string letters;
        for (const units::ResolvedFile& file : tree.files) {
            for (const units::Unit& unit : file.units) {
                letters += stateLetters[static_cast<std::size_t>(unit.state)];
            }
            letters += ' ';
        }
        return letters;
    }
    static std::string text(const UnitTree& tree, units::Assembly::Bytes bytes = units::Assembly::Bytes::asTheyAre) {
        std::string written;
        units::Assembly(tree).write(bytes, [&](std::string_view part) { written += part; });
        return written;
    }
};

TEST_F(Assembling, PutsContentsInPlaceOnce) {
    put("m", fileOf("(object Design d (list u " + unitObject("A", "a") + " " + unitObject("B", "b") + " " +
                    unitObject("A again", "./a") + "))"));
    put("a", fileOf("(object Class_Category \"A\" x " + unitObject("B", "b") + ") (object Rest r)"));
    put("b",
        fileOf("(object Class_Category \"B\" y (list u " + unitObject("A", "a") + unitObject("itself", "b") + "))\n"));
    const UnitTree tree = read("m");
    EXPECT_EQ(states(tree), "frr f cc ");
    EXPECT_FALSE(tree.isComplete()); // what stands in itself is not there
    const std::string closing = "\n\tlogical_presentations \t(list unit_reference_list))";
    const auto closed = [&](const std::string& unit) { return unit.substr(0, unit.size() - 1) + closing; };
    EXPECT_EQ(text(tree),
              fileOf("(object Design d (list u (object Class_Category \"A\" x (object Class_Category \"B\" y (list u " +
                     closed(unitObject("A", "a")) + closed(unitObject("itself", "b")) + "))) " +
                     closed(unitObject("B", "b")) + " " + closed(unitObject("A again", "./a")) + "))"));
}

TEST_F(Assembling, LeavesWhatIsNotFoundOrNoUnit) {
    const std::string model =
        fileOf("(object Design d (list u " + unitObject("none", "none", "SubSystem") + unitObject("text", "text", "X") +
               unitObject("kind", "kind", "SubSystem") + unitObject("folder", ".", "X") + unitObject("", "", "X") +
               "(object X is_unit TRUE is_loaded TRUE file_name \"none\") (object X is_loaded FALSE) "
               "(object X is_unit TRUE is_loaded \"FALSE\" file_name \"none\")))");
    put("m", model);
    put("text", "no model");
    put("kind", fileOf("(object Class_Category \"kind\")"));
    const UnitTree tree = read("m");
    EXPECT_EQ(states(tree), "muumm ");
    EXPECT_EQ(text(tree), model);
    const std::string unended = "(object Petal)(object Design d (list u (object Class_Category \"A\" is_unit TRUE "
                                "is_loaded FALSE file_name \"none\"";
    put("m", unended);
    EXPECT_EQ(text(read("m")), unended + "\n\tlogical_presentations \t(list unit_reference_list)");
}

// If it were one, its content would count as standing further up where it is wanted, and be nowhere.
TEST_F(Assembling, AReferenceThatIsNotWrittenIsNone) {
    const std::string inner = unitObject("B", "b");
    const std::string outer = "(object X \"A\" is_unit TRUE is_loaded FALSE file_name \"none\" of " + inner + ")";
    put("m", fileOf("(object Design d (list u " + outer + unitObject("C", "c") + inner + "))"));
    put("b", fileOf("(object Class_Category \"B\")"));
    put("c", fileOf("(object Class_Category \"C\") (object Rest of " + inner + ")", "of " + inner));
    const UnitTree tree = read("m");
    EXPECT_EQ(states(tree), "mff   ");
    EXPECT_EQ(text(tree), fileOf("(object Design d (list u " + outer +
                                 "(object Class_Category \"C\")(object Class_Category \"B\")))"));
    for (const char* kind : {"Class_Category \"P\"", "Design"}) {
        put("m", fileOf("(object " + std::string(kind) + " (list u " + inner + "))", "of " + inner));
        EXPECT_EQ(states(read("m")), "f  ") << kind;
        EXPECT_NE(text(read("m")).find("(list u (object Class_Category \"B\"))"), std::string::npos) << kind;
    }
    put("m", fileOf("(object Class_Category \"P\")(object Rest of " + inner + ")"));
    EXPECT_EQ(states(read("m")), " ");
    put("m", fileOf("(object Design d (list u " + unitObject("b", "b", "SubSystem") + unitObject("b", "./b", "X") +
                    unitObject("b", "b") + unitObject("b", "b", "X") + "))"));
    EXPECT_EQ(states(read("m")), "uufr  "); // a file of another kind may be that of a later unit
}

TEST_F(Assembling, APackageByItselfGoesIntoALogicalView) {
    put("p.cat", fileOf("(object Class_Category \"P\" (list u " + unitObject("Q", "q.cat") + "))"));
    put("q.cat", fileOf("(object Class_Category \"Q\")"));
    const std::string written = text(read("p.cat"));
    EXPECT_NE(written.find("(object Class_Category \"Logical View\""), std::string::npos);
    EXPECT_NE(written.find("(object Class_Category \"P\" (list u (object Class_Category \"Q\")))"), std::string::npos);
    put("again", written);
    EXPECT_FALSE(units::Assembly(read("again")).differs());
    put("l.cat", fileOf("(object Class_Category \"Logical View\")"));
    EXPECT_FALSE(units::Assembly(read("l.cat")).differs());
}

TEST_F(Assembling, BringsSeveralEncodingsToOne) {
    put("m", fileOf("(object D \"\xE9\" u " + unitObject("K", "k") + ")"));
    put("k", fileOf("(object Class_Category \"\xD6\xD0\")", "charSet 134"));
    const UnitTree tree = read("m");
    ASSERT_TRUE(units::Assembly(tree).isMixed());
    EXPECT_EQ(text(tree), fileOf("(object D \"\xE9\" u (object Class_Category \"\xD6\xD0\"))"));
    EXPECT_EQ(text(tree, units::Assembly::Bytes::utf8IfMixed),
              fileOf("(object D \"é\" u (object Class_Category \"中\"))"));
}

TEST_F(Assembling, SaysWhereEachByteComesFrom) {
    const std::string model = fileOf("\n(object D\n \"\xE9t\xE9\"\n u " + unitObject("K", "k") + "\n\xE9\n)");
    const std::string unit = fileOf("(object Class_Category\n \"\xD6\xD0\\\"\n \"K\")", "charSet 134");
    put("m", model);
    put("k", unit);
    const UnitTree tree = read("m");
    std::string written;
    const PieceMap map = units::Assembly(tree).write(units::Assembly::Bytes::utf8IfMixed,
                                                     [&](std::string_view part) { written += part; });
    const auto expect = [&](std::string_view there, std::size_t file, std::string_view inFile) {
        const std::size_t offset = (file == 0 ? model : unit).find(inFile);
        const std::size_t at = written.find(there);
        EXPECT_EQ(map.toFile(at), (PieceMap::FilePlace{file, offset})) << there;
        EXPECT_EQ(map.toText(file, offset), at) << there;
    };
    expect("été", 0, "\xE9t\xE9");
    expect("u (object", 0, "u (object");
    expect("(object Class_Category\n", 1, "(object Class_Category\n");
    expect("中", 1, "\xD6\xD0");
    expect("\"K\")\n", 1, "\"K\")");
    expect("\né", 0, "\n\xE9");
    EXPECT_EQ(map.toFile(written.find("\n u")).offset, model.find("\n u")); // however the line grew
    EXPECT_EQ(map.toFile(written.size()), (PieceMap::FilePlace{0, model.size()}));
    EXPECT_EQ(map.toText(0, model.find("is_unit")), std::nullopt);
    EXPECT_EQ(map.toText(1, 0), std::nullopt);
    EXPECT_EQ(map.toText(0, model.size()), std::nullopt);
    EXPECT_EQ(map.toText(2, 0), std::nullopt);
}

std::string package(const std::string& name, const std::string& content = "") {
    return "(object Class_Category \"" + name + "\" " + content + ")";
}

std::string replaced(std::string text, const std::string& pattern, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(pattern, at)) != std::string::npos; at += by.size()) {
        text.replace(at, pattern.size(), by);
    }
    return text;
}

TEST_F(Assembling, KnowsTheRootOfADesign) {
    const auto design = [](const std::string& content) { return "(object Design \"Logical View\" " + content + ")"; };
    const std::string view = package("Logical View");
    const struct {
        std::string content;
        std::string renamed; // empty when the model stays as it is
    } cases[] = {
        {design("root_category " + package("Vue")), "Vue"},
        {design("root_category " + package(R"(Vue \"x\")", "of " + view)), R"(Vue \"x\")"},
        {design("root_category\n" + package("Logical View")), ""},
        {design("root_category " + package("")), "(empty)"},
        {design("root_category (object Class_Category)"), ""},
        {design("root_category (object SubSystem \"Vue\")"), ""},
        {design("x \"root_category\" y (object Z root_category " + package("Vue") + ")"), ""},
        {design("root_category " + package("A") + " root_category " + package("B")), "A"},
        {design("root_category " + package("A") + " root_category " + view), ""}, // the import begins there
        {design("root_usecase_package " + package("Use", view) + " root_category " + package("A")), ""},
        {package("P", "root_category " + package("Vue")), ""},
        {"(object Design)(object Other root_category " + package("Vue") + ")", ""},
    };
    for (const auto& each : cases) {
        put("m", fileOf(each.content));
        const units::Assembly assembly(read("m"));
        const auto& renamed = assembly.getRenamedRoot();
        EXPECT_EQ(renamed ? (renamed->head.name.empty() ? "(empty)" : renamed->head.name) : "", each.renamed)
            << each.content;
        if (renamed) {
            EXPECT_TRUE(units::mayNeedAssembly(pathOf("m"))) << each.content;
            EXPECT_EQ(text(read("m")),
                      replaced(fileOf(each.content), "y \"" + renamed->head.name + "\"", "y \"Logical View\""));
        }
    }
}

TEST_F(Assembling, PathsBeginWithTheNameThatTheRootIsGiven) {
    const std::string content = // * where it becomes another
        "(object ClassView \"Vue::A\" \"*::B::C\" @1 label \"Vue::A\") (object ClassView \"Class\" \"Vuet::A\" @2)"
        "(object Class \"Vue::A\" documentation \"Vue::A\" supplier \"*::A\" type \"*::\" AssociationClass \"*::A\")"
        "(object Role supplier \"x Vue::A\" type \"Vue\" type \"Vue:A\" supplier @3 result \"Vue::A\" documentation\n"
        "|supplier \"Vue::A\"\n) (object CategoryView \"Class\" \"Vue::A\")";
    const auto model = [&](const std::string& root, const std::string& inUnit) {
        return fileOf("(object Design root_category " + package(root, "x (list u " + content + inUnit + "))")) + "\n";
    };
    const std::string unit = package("K", "x (list u " + content + ")");
    put("m", replaced(model("*", unitObject("K", "k")), "*", "Vue"));
    put("k", replaced(fileOf(unit + " (object Rest type \"Vue::A\")"), "*", "Vue"));
    EXPECT_EQ(text(read("m")), replaced(model("*", unit), "*", "Logical View"));
}

// The root's content may be in a file in one encoding, and what names it in others.
TEST_F(Assembling, TheRootMayBeAUnit) {
    const std::string root = "\xCC\xEE\xE4"; // "Мод" in windows-1251
    const std::string asInGbk = "\xA7\xAE\xA7\xE0\xA7\xD5";
    const auto type = [](const std::string& name) { return "type \"" + name + "::A\""; };
    put("m", fileOf("(object Design root_category " + unitObject("Logical View", "r") + type(root) + ")"));
    put("r",
        fileOf(package(root, type(root) + " u " + unitObject("K", "k") + " v " + unitObject("L", "l")), "charSet 204"));
    put("k", fileOf(package("K", type(asInGbk)), "charSet 134"));
    put("l", fileOf(package("L", type(root)), "charSet 77"));
    const auto expected = [&](const std::string& inModel, const std::string& inK, const std::string& inL) {
        return fileOf(
            "(object Design root_category " +
            package("Logical View", type("Logical View") + " u " + package("K", inK) + " v " + package("L", inL)) +
            inModel + ")");
    };
    const UnitTree tree = read("m");
    const auto renamed = units::Assembly(tree).getRenamedRoot();
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->file, 1U);
    EXPECT_EQ(renamed->head.place.column, fileOf("", "charSet 204").size() + 1);
    EXPECT_EQ(text(tree), expected(type("Logical View"), type(asInGbk), type("Logical View"))); // bytes are bytes
    EXPECT_EQ(text(tree, units::Assembly::Bytes::utf8IfMixed),
              expected(type("Ìîä"), type("Logical View"), type("ÃÓ‰"))); // other letters, in encodings without these
    std::filesystem::remove(pathOf("r"));
    EXPECT_FALSE(units::Assembly(read("m")).getRenamedRoot()); // its place has the right name
}

// Neither the stack nor the number of open files is a limit, and nothing is read that might never end.
TEST_F(Assembling, UnitsNestDeepAndAreFiles) {
    constexpr int depth = 1500; // more than a process may have open
    for (int level = 0; level < depth; ++level) {
        const std::string next = std::to_string(level + 1);
        put(std::to_string(level), fileOf(package(std::to_string(level), "u " + unitObject(next, next))));
    }
    put(std::to_string(depth), fileOf(package("end")));
    const UnitTree tree = read("0");
    EXPECT_TRUE(tree.isComplete());
    ASSERT_EQ(tree.files.size(), depth + 1U);
    EXPECT_NE(text(tree).find(package("end")), std::string::npos);

    // What the file system showed when the name was looked up may be another file by the time that it is opened.
    ASSERT_EQ(::mkfifo(pathOf("pipe").c_str(), 0600), 0);
    for (const std::string& path : {pathOf("pipe"), std::string("/dev/zero"), pathOf("")}) {
        EXPECT_THROW(static_cast<void>(units::readUnitFile(path, units::Extent::whole)), std::system_error) << path;
    }
    EXPECT_FALSE(units::readUnitFile("/proc/self/pagemap", units::Extent::whole).isModel); // hundreds of gigabytes
}

TEST_F(Assembling, AFileThatIsOneTextIsKnownWithoutReadingIt) {
    const std::string filling(300'000, ' ');
    const std::string root = "root_category \t(object Class_Category ";
    for (const std::size_t at : {std::size_t{0}, std::size_t{262'000}, std::size_t{262'140}, std::size_t{262'130},
                                 std::size_t{261'900}, std::size_t{299'990}}) {
        const std::string before = filling.substr(0, at);
        put("m", before + "is_loaded \t FALSE" + filling);
        EXPECT_TRUE(units::mayNeedAssembly(pathOf("m"))) << at;
        put("m", before + root + "\"Vue\"" + filling);
        EXPECT_TRUE(units::mayNeedAssembly(pathOf("m"))) << at;
        put("m", before + root + "\"Logical View\"" + filling + root + "\"Vue\"");
        EXPECT_FALSE(units::mayNeedAssembly(pathOf("m"))) << at;
    }
    put("m", filling + "is_loaded TRUE is_loaded" + filling + "FALSE is_loaded root_cat egory");
    EXPECT_FALSE(units::mayNeedAssembly(pathOf("m")));
    put("m", "is_loaded"); // whatever follows in memory
    EXPECT_FALSE(units::mayNeedAssembly(pathOf("m")));
    put("m", root);
    EXPECT_TRUE(units::mayNeedAssembly(pathOf("m")));
    EXPECT_THROW(static_cast<void>(units::mayNeedAssembly(pathOf("none"))), std::system_error);
}

} // namespace
