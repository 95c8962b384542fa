#include "notation/unescaped.h"
#include "notation/wordKind.h"
#include "support/NotationEvents.h"

#include <gtest/gtest.h>

namespace {

using namespace notation;

TEST(Places, CutOutWhatTheyDelimit) {
    constexpr std::string_view text = "\n(object Petal\r\n    v 1)\n\n(object A \"n\"\n"
                                      "\tl (list L\n\t    (object B \"b\" @3\n\t\tk \"x\" p (1, 2)))\n\tlast TRUE)\n";
    struct Row {
        const char* what; // the start or value
        std::uint64_t line;
        std::uint64_t column;
        std::string_view whole; // from its place to its end: for a construct to that of its `end`
    };
    const Row rows[] = {
        {"<object Petal", 2, 1, "(object Petal\r\n    v 1)"},
        {"v=integer:1", 3, 7, "1"},
        {"<object A 'n'", 5, 1, text.substr(text.find("(object A"), text.size() - text.find("(object A") - 1)},
        {"l=<list L", 6, 4, "(list L\n\t    (object B \"b\" @3\n\t\tk \"x\" p (1, 2)))"},
        {"<object B 'b' @3", 7, 6, "(object B \"b\" @3\n\t\tk \"x\" p (1, 2))"},
        {"k=text:x", 8, 5, "\"x\""},
        {"p=location:1,2", 8, 11, "(1, 2)"},
        {"last=flag:TRUE", 9, 7, "TRUE"},
    };
    MemorySource source(text);
    Reader reader(source);
    const Row* row = rows;
    std::vector<const Row*> open;
    const auto cut = [&](const Event& event) {
        return text.substr(event.place.offset, event.end - event.place.offset);
    };
    while (reader.next()) {
        const Event& event = reader.event();
        if (event.kind == EventKind::end) {
            EXPECT_EQ(cut(event), open.back()->whole);
            open.pop_back();
            continue;
        }
        ASSERT_NE(row, std::end(rows));
        EXPECT_EQ(test::wordsOf(event), row->what);
        EXPECT_EQ(event.place.line, row->line) << row->what;
        EXPECT_EQ(event.place.column, row->column) << row->what;
        if (event.kind == EventKind::start) {
            open.push_back(row);
        } else {
            EXPECT_EQ(cut(event), row->whole);
        }
        if (event.isProperty()) {
            EXPECT_EQ(text.substr(event.keyPlace.offset, event.key.size()), event.key);
        }
        ++row;
    }
    EXPECT_EQ(row, std::end(rows));
}

TEST(Places, OfLongTextsInPieces) {
    const std::string longText(100'000, 'x');
    Reader::Settings settings;
    settings.window = 1000;
    settings.longestName = 10;
    for (const std::string& text : {"(object A k \"" + longText + "\" l 1)", "(object A k\n|" + longText + "\n l 1)"}) {
        const std::string events = test::eventsOf(text, settings);
        EXPECT_EQ(events.size(), longText.size() + std::string("<object A k=text: l=integer:1 >").size());
        EXPECT_TRUE(events.ends_with(longText + " l=integer:1 >"));
    }
    const std::string named = "(object K" + longText + " \"" + longText + "\" k" + longText + " TRUE)";
    MemorySource source(named);
    Reader reader(source, settings);
    ASSERT_TRUE(reader.next());
    ASSERT_EQ(reader.event().names.size(), 1U);
    EXPECT_EQ(reader.event().names[0].length, longText.size());
    EXPECT_EQ(test::wordsOf(reader.event()), "<object Kxxxxxxxxx 'xxxxxxxxxx'");
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(test::wordsOf(reader.event()), "kxxxxxxxxx=flag:TRUE");
    const std::string escapes = "(object A k \"" + std::string(4999, '\\') + "\\\" l 1)";
    EXPECT_EQ(test::eventsOf(escapes, settings), "<object A k=text:" + std::string(5000, '\\') + " l=integer:1 >");
}

TEST(Places, NestingCostsNoStackAndHasALimit) {
    std::string text;
    for (int depth = 0; depth < 200'000; ++depth) {
        text += "(object A k ";
    }
    text += "1" + std::string(200'000, ')') + "(object B)";
    EXPECT_EQ(test::damagesOf(text), std::vector<std::string>{"1:1200001 tooDeep"});
    Reader::Settings settings;
    settings.deepest = 1;
    EXPECT_EQ(test::eventsOf("(object A k (list (a) \"(\") l 1 m (list (b)))", settings),
              "<object A !tooDeep l=integer:1 >");
}

TEST(WordKind, TellsNumbersFromWords) {
    const std::string digits(64, '7');
    const auto expectAll = [](TokenKind kind, std::initializer_list<std::string> words) {
        for (const std::string& word : words) {
            EXPECT_EQ(wordKind(word), kind) << word;
        }
    };
    expectAll(TokenKind::integer, {"0", "-12", "+1", digits});
    expectAll(TokenKind::real, {"1.", "-.5", "1e5", "1.5E-7"});
    expectAll(TokenKind::reference, {"@1"});
    expectAll(TokenKind::word, {"-", ".", "1e", "e5", "1x", "--1", "@-1", "@", "\xD6\xD0", digits + "7"});
}

TEST(Unescaped, TakesOutWhatEscapes) {
    EXPECT_EQ(unescaped(R"(a\"b\\c\n\\\")"), R"(a"b\c\n\")");
    EXPECT_EQ(unescaped("a\\"), "a\\");
    EXPECT_EQ(unescaped(""), "");
}

} // namespace
