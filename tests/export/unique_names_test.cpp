#include "export/UniqueNames.h"
#include "text/utf8.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <set>

namespace {

using namespace std::string_view_literals;
using exporter::NameRules;
using exporter::quotedName;
using exporter::UniqueNames;

bool isLowerCaseWord(int character, bool isFirst) {
    return character == '_' || (character >= 'a' && character <= 'z') ||
           (!isFirst && character >= '0' && character <= '9');
}
bool isWord(int character, bool isFirst) {
    return isLowerCaseWord(character, isFirst) || (character >= 'A' && character <= 'Z') || character > 0x7F;
}

constexpr std::array reserved{"a_2"sv, "end"sv, "end_"sv, "order"sv};
constexpr NameRules sql{
    .longest = 32, .allows = isLowerCaseWord, .foldsCase = true, .reserved = reserved, .quote = '"'};
constexpr NameRules aliases{.longest = 40, .allows = isWord, .foldsCase = false, .reserved = reserved, .quote = 0};

TEST(UniqueNames, FollowTheRules) {
    struct Row {
        std::string_view text;
        std::string_view inSql; // each made alone
        std::string_view asAlias;
    };
    for (const Row& row : {
             Row{"price", "price", "price"},
             Row{"Price", "\"Price\"", "Price"},
             Row{"ORDER", "\"ORDER\"", "ORDER_"},
             Row{"end", "\"end\"", "end__"},
             Row{"pin no", "\"pin no\"", "pin_no"},
             Row{"2x", "\"2x\"", "_2x"},
             Row{"", "_", "_"},
             Row{R"(a"b)", R"("a""b")", "a_b"},
             Row{"a\n\u202Eb", "a__b", "a_\u202Eb"},
             Row{"caf\xE9", "caf_", "caf_"},
             Row{"\u8BA2\u5355", "\"\u8BA2\u5355\"", "\u8BA2\u5355"},
             Row{"a_name_of_exactly_32_bytes_in_it", "a_name_of_exactly_32_bytes_in_it",
                 "a_name_of_exactly_32_bytes_in_it"},
         }) {
        EXPECT_EQ(quotedName(UniqueNames(sql).make(row.text), sql), row.inSql);
        EXPECT_EQ(quotedName(UniqueNames(aliases).make(row.text), aliases), row.asAlias);
    }
    // The hash was made by another program.
    EXPECT_EQ(UniqueNames(sql).make("a_name_of_more_than_32_bytes_in_it"), "a_name_of_more_than_32__b17c0e8e");
    UniqueNames names(sql);
    std::string made;
    for (const char* text : {"a", "a", "A", "a_3", "a", "A_5"}) {
        made += names.make(text) + " ";
    }
    EXPECT_EQ(made, "a a_2 A_3 a_3_2 a_4 A_5 ");
    UniqueNames others(aliases);
    EXPECT_EQ(others.make("a"), "a");
    EXPECT_EQ(others.make("a"), "a_3") << "a_2 is reserved";
    EXPECT_EQ(others.make("A"), "A");
}

TEST(UniqueNames, NeedQuotesInTablesAsInRules) {
    const exporter::Quoting quoting(sql);
    for (const std::string_view name : {""sv, "price"sv, "Price"sv, "2x"sv, "x2"sv, "_"sv, "end"sv, "END"sv, "ends"sv,
                                        "end_"sv, "e_2"sv, "a_2"sv, "a b"sv, "caf\u00E9"sv, "\x7F"sv, "\0"sv}) {
        EXPECT_EQ(quoting.needsQuotes(name), needsQuotes(name, sql)) << name;
    }
    EXPECT_FALSE(exporter::Quoting(aliases).needsQuotes("a b"));
}

// As new names of a few or of many before it.
TEST(UniqueNames, AreFreeAfterClear) {
    UniqueNames names(sql);
    for (int count : {3, 300, 3}) {
        for (int number = 0; number < count; ++number) {
            EXPECT_EQ(names.make("n" + std::to_string(number) + "x"), "n" + std::to_string(number) + "x");
        }
        EXPECT_EQ(names.make("n0x"), "n0x_2");
        names.clear();
    }
}

/// A character, what takes its place in a name with quotes and in one without, and its lower case.
struct Piece {
    std::string_view text;
    std::string_view inSql;
    std::string_view inAlias;
    std::string_view inLowerCase;
};
constexpr std::array pieces{
    Piece{"a", "a", "a", "a"},
    Piece{"A", "A", "A", "a"},
    Piece{"_", "_", "_", "_"},
    Piece{"2", "2", "2", "2"},
    Piece{"\u00E9", "\u00E9", "\u00E9", "\u00E9"},
    Piece{"\u00C9", "\u00C9", "\u00C9", "\u00E9"},
    Piece{" ", " ", "_", " "},
    Piece{"\xFF", "_", "_", "_"},
};

std::string inLowerCase(std::string name) {
    for (const Piece& piece : pieces) {
        for (std::size_t at = 0; piece.inLowerCase != piece.inSql && (at = name.find(piece.inSql)) != name.npos;) {
            name.replace(at, piece.inSql.size(), piece.inLowerCase);
        }
    }
    return name;
}

// The twin keeps a set of all names so far and tries every number from 2.
TEST(UniqueNames, GetTheSmallestFreeNumber) {
    constexpr NameRules freeAliases{.longest = 40, .allows = isWord, .foldsCase = false, .reserved = {}, .quote = 0};
    std::mt19937 random(1); // NOLINT: the same texts in each run
    for (const NameRules* rules : {&sql, &freeAliases}) {
        UniqueNames names(*rules);
        std::set<std::string> taken;
        for (int round = 0; round < 4000; ++round) {
            std::string text;
            std::string name;
            for (auto left = random() % 6; left > 0; --left) {
                const Piece& piece = pieces[random() % pieces.size()];
                text += piece.text;
                name += rules == &sql ? piece.inSql : piece.inAlias;
            }
            if (name.empty() || (rules == &freeAliases && name.front() == '2')) {
                name.insert(0, "_");
            }
            const auto take = [&](const std::string& one) {
                return taken.insert(rules->foldsCase ? inLowerCase(one) : one).second;
            };
            std::string expected = name;
            for (int number = 2; !take(expected); ++number) {
                expected = name + "_" + std::to_string(number);
            }
            ASSERT_EQ(names.make(text), expected) << text;
        }
    }
}

TEST(UniqueNames, FitHoweverLongTheTextsAre) {
    UniqueNames names(sql);
    std::set<std::string> taken;
    for (int round = 0; round < 3000; ++round) {
        std::string text(round % 3, 'a'); // characters of three bytes are cut at each place
        for (int made = 0; made < 11 + round % 7; ++made) {
            text += "\u4E2D";
        }
        const std::string name = names.make(text);
        EXPECT_LE(name.size(), sql.longest);
        EXPECT_TRUE(text::isValidUtf8(name)) << name;
        EXPECT_EQ(name.substr(0, 10), text.substr(0, 10));
        EXPECT_TRUE(taken.insert(name).second) << name;
    }
    UniqueNames again(sql);
    EXPECT_EQ(again.make(std::string(40, 'b')), UniqueNames(sql).make(std::string(40, 'b')));
}

} // namespace
