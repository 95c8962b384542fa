#include "scanner/InputLayer.h"

#include "InputText.h"
#include "scanner/Matcher.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
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

/// A stream whose reads go as told: a positive number of bytes, 0 for the end, or a negated error code.
class ScriptedStream {
public:
    explicit ScriptedStream(std::vector<int> script) : script_(std::move(script)) {
        stream_ = fopencookie(this, "r", {&ScriptedStream::read, nullptr, nullptr, nullptr});
    }
    ~ScriptedStream() { std::fclose(stream_); }
    ScriptedStream(const ScriptedStream&) = delete;
    ScriptedStream& operator=(const ScriptedStream&) = delete;

    std::FILE* get() const { return stream_; }

private:
    static ssize_t read(void* self, char* buffer, std::size_t size) {
        auto* const stream = static_cast<ScriptedStream*>(self);
        const int step = stream->next_ < stream->script_.size() ? stream->script_[stream->next_++] : 0;
        if (step < 0) {
            errno = -step;
            return -1;
        }
        const std::size_t count = std::min(static_cast<std::size_t>(step), size);
        std::memset(buffer, 'a', count);
        return static_cast<ssize_t>(count);
    }

    std::FILE* stream_;
    std::vector<int> script_;
    std::size_t next_ = 0;
};

std::size_t countBytes(const std::vector<int>& script) {
    const InputText input("");
    const ScriptedStream stream(script);
    yyin = stream.get();
    return InputText::rest().size();
}

TEST(InputLayer, MakesInterruptedReadsAgain) {
    struct Row {
        std::vector<int> script;
        std::size_t bytes;
    };
    for (const Row& row : {Row{{-EINTR, 5}, 5}, Row{{5, -EINTR, 3}, 8}, Row{{-EINTR, -EINTR, -EINTR, 1}, 1},
                           Row{{5, -EINTR, 0}, 5}, Row{{-EINTR, 0}, 0}}) {
        EXPECT_EQ(countBytes(row.script), row.bytes);
    }
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

using InputLayerDeath = testing::Test;

TEST(InputLayerDeath, EndsTheProcessWithItsMessage) {
    const auto exitsWithTwo = testing::ExitedWithCode(2);
    EXPECT_EXIT(countBytes({-EIO}), exitsWithTwo, "^input in flex scanner failed\n$");
    EXPECT_EXIT(countBytes({5, -EIO}), exitsWithTwo, "^input in flex scanner failed\n$");
    EXPECT_EXIT(readWithAllocations(0), exitsWithTwo, "^out of dynamic memory in yy_create_buffer\\(\\)\n$");
    EXPECT_EXIT(readWithAllocations(3), exitsWithTwo, "^fatal error - scanner input buffer overflow\n$");
    EXPECT_EXIT(pushBackForever(), exitsWithTwo, "^flex scanner push-back overflow\n$");
}

} // namespace
} // namespace rose::test
