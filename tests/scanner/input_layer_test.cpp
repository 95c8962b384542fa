#include "InputText.h"
#include "scanner/InputLayer.h"
#include "scanner/Matcher.h"

#include <gtest/gtest.h>

#include <vector>

namespace rose::test {
namespace {

using namespace std::string_literals;

const std::string longText = [] {
    std::string text;
    for (int index = 0; index < 70'000; ++index) {
        text += static_cast<char>(index % 251);
    }
    return text;
}();

TEST(InputLayer, GivesEveryByteOnceAndThenTheEnd) {
    for (const std::string& text : {""s, "a"s, "\0\xFF\n"s, longText}) {
        for (const std::size_t size : {1, 7, 16384}) {
            const InputText input(text, {.bufferSize = size, .readSize = size});
            EXPECT_EQ(InputText::rest(), text);
            EXPECT_EQ(yyinput(), -1) << "the end stays the end";
        }
    }
}

TEST(InputLayer, GivesBackWhatWasPutBackInReverse) {
    struct Row {
        std::size_t consumed;
        std::string putBack;
    };
    for (const Row& row : {Row{0, "x"}, Row{0, "xyz"}, Row{3, "cba"}, Row{3, "zyxwv"}, Row{6, "\xFF\0"s}}) {
        const InputText input("abcdef");
        std::string expected = "abcdef"s.substr(row.consumed);
        for (std::size_t count = 0; count < row.consumed; ++count) {
            yyinput();
        }
        for (const char byte : row.putBack) {
            yyunput(byte, yytext);
            expected.insert(0, 1, byte);
        }
        EXPECT_EQ(InputText::rest(), expected);
    }
}

TEST(InputLayer, MatchesWhatWasPutBack) {
    struct Row {
        std::string putBack; // behind the first match
        std::vector<int> rules;
    };
    for (const Row& row : {Row{"", {62, 60}}, Row{"type ", {62, 37, 60}}, Row{"\tkeys", {62, 62, 60}}}) {
        const InputText input("\tkeys\"a\"\tquid \"1\"");
        std::vector<int> rules;
        scan(scannerInput, [&](int rule, const char*, std::size_t) {
            rules.push_back(rule);
            for (std::size_t left = rules.size() == 1 ? row.putBack.size() : 0; left > 0; --left) {
                yyunput(row.putBack[left - 1], yytext);
            }
        });
        EXPECT_EQ(rules, row.rules) << row.putBack;
        EXPECT_EQ(InputText::rest(), "") << "a scan goes to the end";
    }
}

TEST(InputLayer, HidesFromTheMatcherWhatWasConsumed) {
    const InputText input("\tkeys \tlabel \"a\" keys \tquid \"b\" keys type \"c\"");
    std::vector<std::string> matches;
    scan(scannerInput, [&](int rule, const char* text, std::size_t) {
        matches.emplace_back(text);
        if (rule == 62) {
            yyinput();
            EXPECT_EQ(matches.back(), yytext);
        }
        if (matches.size() > 3) {
            yyinput(); // at the end also the first letter of "type"
        }
    });
    EXPECT_EQ(matches, (std::vector<std::string>{"\tkeys", "\tlabel \"a", " keys", "\tquid \"b", " keys"}));
}

TEST(InputLayer, KeepsTheMatchWhileTheActionReadsOn) {
    const InputText input("type \"int\"" + longText, {.bufferSize = 16, .readSize = 8});
    std::string read;
    scan(scannerInput, [&](int, const char*, std::size_t) {
        EXPECT_STREQ(yytext, "type \"int");
        if (read.empty()) {
            read = InputText::rest();
            EXPECT_STREQ(yytext, "type \"int");
            EXPECT_EQ(yyleng, 9U);
        }
    });
    EXPECT_EQ(read, "\"" + longText);
}

/// The allocation with this number (the buffer's own is 0) and all behind it fail.
int allocationsLeft = 0;

void* failingReallocate(void* block, std::size_t size) {
    return allocationsLeft-- > 0 ? std::realloc(block, size) : nullptr;
}

void readWithAllocations(int count) {
    allocationsLeft = count;
    const InputText input("type " + std::string(1000, 'x'),
                          {.bufferSize = 16, .readSize = 16, .reallocate = failingReallocate});
    scan(scannerInput, [](int, const char*, std::size_t) {});
}

void pushBackForever() {
    const InputText input("abc", {.bufferSize = 4, .readSize = 4});
    for (int count = 0; count < 100; ++count) {
        yyunput('x', yytext);
    }
}

void readBeyondTheEnd() {
    const InputText input("abc");
    yyinput();
    scannerInput.moveCursor(scannerInput.limit() + 1);
    scannerInput.refill(scannerInput.limit());
}

using InputLayerDeath = testing::Test;

TEST(InputLayerDeath, EndsTheProcessWithItsMessage) {
    const auto exitsWithTwo = testing::ExitedWithCode(2);
    EXPECT_EXIT(readWithAllocations(0), exitsWithTwo, "^out of dynamic memory in yy_create_buffer\\(\\)\n$");
    EXPECT_EXIT(readWithAllocations(3), exitsWithTwo, "^fatal error - scanner input buffer overflow\n$");
    EXPECT_EXIT(pushBackForever(), exitsWithTwo, "^flex scanner push-back overflow\n$");
    EXPECT_EXIT(readBeyondTheEnd(), exitsWithTwo, "^fatal flex scanner internal error--end of buffer missed\n$");
}

} // namespace
} // namespace rose::test
