#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/charSetEncoding.h"
#include "host/encoding/convertText.h"
#include "petal/Folder.h"
#include "units/Assembly.h"
#include "units/localText.h"

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
        const PieceMap map = units::Assembly(tree).write(bytes, [&](std::string_view part) { written += part; });
        expectToCover(map, written, tree);
        return written;
    }
    // Every byte of the text is in one piece, and what is copied is what the file holds there.
    static void expectToCover(const PieceMap& map, const std::string& text, const UnitTree& tree) {
        std::uint64_t end = 0;
        for (const units::Piece& piece : map.getPieces()) {
            EXPECT_EQ(piece.begin, end);
            EXPECT_GT(piece.length, 0U);
            end = piece.begin + piece.length;
            std::ifstream stream(tree.files[piece.file].path, std::ios::binary);
            const std::string file{std::istreambuf_iterator<char>(stream), {}};
            if (piece.isCopied) {
                EXPECT_EQ(text.substr(piece.begin, piece.length), file.substr(piece.offset, piece.fileLength));
            }
            EXPECT_EQ(map.toFile(piece.begin), (PieceMap::FilePlace{piece.file, piece.offset}));
            if (piece.fileLength > 0) {
                EXPECT_EQ(map.toText(piece.file, piece.offset), piece.begin);
            }
        }
        EXPECT_EQ(end, text.size());
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
}

TEST_F(Assembling, AFileMayEndInAReference) {
    const std::string model = "(object Petal)(object Design d (list u (object Class_Category \"A\" is_unit TRUE "
                              "is_loaded FALSE file_name \"none\"";
    put("m", model);
    EXPECT_EQ(text(read("m")), model + "\n\tlogical_presentations \t(list unit_reference_list)");
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
}

TEST_F(Assembling, AFileOfAnotherKindMayBeThatOfALaterUnit) {
    put("m", fileOf("(object Design d (list u " + unitObject("k", "k", "SubSystem") + unitObject("k", "./k", "X") +
                    unitObject("k", "k") + unitObject("k", "k", "X") + "))"));
    put("k", fileOf("(object Class_Category \"k\")"));
    EXPECT_EQ(states(read("m")), "uufr  ");
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

// Lines are told apart in the bytes of a file and in what they become: none may hide a line end, or make one.
TEST_F(Assembling, NoEncodingHidesALineEnd) {
    for (int charSet = 0; charSet < 256; ++charSet) {
        KelEncodingConverter from{KelString(units::encodingOf(charSet))};
        KelEncodingConverter utf8("UTF-8");
        const auto lineEnds = [](const KelString& text) {
            return std::ranges::count(text.view(), '\n') + 1000 * std::ranges::count(text.view(), '\r');
        };
        for (unsigned first = 0; first < 0x100 && charSetEncoding(charSet) != nullptr; ++first) {
            for (unsigned second = 0; second < 0x100; ++second) {
                const std::string bytes{static_cast<char>(first), static_cast<char>(second), '\n', '\r'};
                KelString text{std::string_view(bytes)};
                const auto before = lineEnds(text);
                convertText(from, utf8, text);
                ASSERT_EQ(lineEnds(text), before) << charSet << ": " << first << ' ' << second;
            }
        }
    }
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

// Neither the stack nor the number of open files is a limit.
TEST_F(Assembling, UnitsNestAsDeepAsTheyLike) {
    constexpr int depth = 1500; // more than a process may have open
    for (int level = 0; level < depth; ++level) {
        const std::string next = std::to_string(level + 1);
        put(std::to_string(level),
            fileOf("(object Class_Category \"" + std::to_string(level) + "\" u " + unitObject(next, next) + ")"));
    }
    put(std::to_string(depth), fileOf("(object Class_Category \"end\")"));
    const UnitTree tree = read("0");
    EXPECT_TRUE(tree.isComplete());
    ASSERT_EQ(tree.files.size(), depth + 1U);
    EXPECT_NE(text(tree).find("(object Class_Category \"end\")"), std::string::npos);
}

// What the file system showed when the name was looked up may be another file by the time that it is opened.
TEST_F(Assembling, NothingIsReadThatMightNeverEnd) {
    ASSERT_EQ(::mkfifo(pathOf("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", pathOf("link to device"));
    for (const std::string& path : {pathOf("pipe"), std::string("/dev/zero"), pathOf("link to device"), pathOf("")}) {
        EXPECT_THROW(static_cast<void>(units::readUnitFile(path, units::Extent::whole)), std::system_error) << path;
    }
    EXPECT_FALSE(units::readUnitFile("/proc/self/pagemap", units::Extent::whole).isModel); // hundreds of gigabytes
}

TEST_F(Assembling, AFileWithoutReferencesIsKnownWithoutReadingIt) {
    const std::string filling(300'000, ' ');
    for (const std::size_t at : {std::size_t{0}, std::size_t{262'140}, std::size_t{262'130}, std::size_t{299'990}}) {
        put("m", filling.substr(0, at) + "is_loaded \t FALSE" + filling);
        EXPECT_TRUE(units::mayHoldReferences(pathOf("m"))) << at;
    }
    put("m", filling + "is_loaded TRUE is_loaded" + filling + "FALSE is_loaded");
    EXPECT_FALSE(units::mayHoldReferences(pathOf("m")));
    EXPECT_THROW(static_cast<void>(units::mayHoldReferences(pathOf("none"))), std::system_error);
}

} // namespace
