#include "MatchEvent.h"
#include "RealModels.h"
#include "scanner/RuleTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace rose::test {
namespace {

using namespace std::string_literals;

constexpr std::size_t sizes[] = {1, 2, 3, 7, 61, 128, 1000, 8192};

struct MatchRow {
    const char* what;
    std::string text;
    MatchEvents expected;
};

class Matches : public testing::TestWithParam<MatchRow> {};

TEST_P(Matches, AreFoundBehindEveryBufferSize) {
    for (const VectorCode& code : vectorCodes()) {
        for (const std::size_t size : sizes) {
            EXPECT_EQ(matcherEvents(GetParam().text, size, size, code), GetParam().expected)
                << code.instructions << ", buffer size " << size;
        }
    }
    EXPECT_EQ(simpleEvents(GetParam().text), GetParam().expected);
}

const std::string blanks(30000, ' ');
const std::string line(30000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Texts, Matches,
    testing::ValuesIn(std::vector<MatchRow>{
        {"nothing", "", {}},
        {"blanks take all", "x\t \tspace \"1\"", {{5, "\t \tspace \"1"}}},
        {"lead not consumed", "\tkeys  quid \"1", {{62, "\tkeys"}, {60, " quid \"1"}}},
        {"view to its quote", "(object ClassView \"C\" \"A\"\nx\n", {{22, "(object ClassView \"C\" \"A\""}}},
        {"view",
         "(object ClassView \"Class\" \"A::B\" @12 \"\n)",
         {{22, "(object ClassView \"Class\" \"A::B\" @12 \""}}},
        {"view without a name", "(object ClassView \"C\" \"\"\nx\"\n", {{22, "(object ClassView \"C\" \"\""}}},
        {"second literal missing", "\tclient_cardinality \t(value Text \"1\"", {{14, " \t(value Text \"1"}}},
        {"NULs and high bytes", "\0\xFFtype \"\0\xFF\"\0"s, {{37, "type \"\0\xFF"s}}},
        {"lead of a whole vector", "yx" + blanks.substr(0, 32) + "keys", {{62, blanks.substr(0, 32) + "keys"}}},
        {"long blanks", "type" + blanks + "\"\"x\"", {{37, "type" + blanks + "\""}}},
        {"long blanks in a line", "type" + blanks + "\nx\"", {{37, "type" + blanks}}},
        {"long line", "type " + line + "\"", {{37, "type " + line}}},
        {"lines", "\tlabel \t\n|A\n|\n|quid \"\n\tquid \"1", {{34, "\tlabel \t", "A\n\nquid \""}, {60, "\tquid \"1"}}},
    }),
    [](const auto& row) {
        std::string name = row.param.what;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST(Matcher, AgreesWithTheSimpleMatcherOnRandomTexts) {
    for (std::uint32_t seed = 1; seed <= 2500 && !testing::Test::HasFailure(); ++seed) {
        const std::string text = randomText(seed);
        const std::size_t bufferSize = sizes[seed % std::size(sizes)];
        const std::size_t readSize = sizes[seed / 8 % std::size(sizes)];
        const VectorCode& code = vectorCodes()[seed / 64 % vectorCodes().size()];
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", buffer size " << bufferSize << ", read size "
                                        << readSize << ", " << code.instructions);
        EXPECT_EQ(simpleEvents(text), matcherEvents(text, bufferSize, readSize, code));
    }
}

/// All texts of up to `length` bytes that matter to a pattern.
std::vector<std::string> shortTexts(std::size_t length) {
    std::vector<std::string> texts{""};
    for (std::size_t begin = 0; length > 0; --length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const char byte : " \t\"\n)x"s) {
                texts.push_back(texts[begin] + byte);
            }
        }
    }
    return texts;
}

TEST(Matcher, AgreesWithTheSimpleMatcherAroundEveryPattern) {
    std::set<std::pair<Lead, Tail>> seen;
    for (const Pattern& pattern : patterns) {
        const bool first = seen.insert({pattern.lead, pattern.tail}).second;
        const std::string gap = pattern.literal.second.empty() ? "" : " ";
        std::string text;
        for (const std::string& before : shortTexts(2)) {
            for (const std::string& after : shortTexts(first ? 3 : 2)) {
                text.append(before).append(pattern.literal.first).append(gap).append(pattern.literal.second);
                text.append(after).append("~");
            }
        }
        const MatchEvents events = matcherEvents(text);
        EXPECT_EQ(simpleEvents(text), events);
        ASSERT_FALSE(HasFailure() || events.empty()) << "rule " << pattern.number;
    }
}

/// Texts of which a scanner that goes back, or looks on behind its match, would not see the end today.
TEST(Matcher, TakesTimeProportionalToTheInput) {
    struct Row {
        std::string piece;
        bool matchesEach; // or all the pieces together
        std::size_t matches;
    };
    constexpr std::size_t size = 4'000'000;
    for (const Row& row : {Row{" ", false, 0}, Row{"*", false, 0}, Row{"PDL", false, 1}, Row{"\tstatic )", true, 1},
                           Row{"\tclient_cardinality ", false, 0}, Row{"(object ClassView \"", false, 0},
                           Row{"(object ClassView \"a\" ", false, 1}, Row{" (object Role \n", true, 1}}) {
        std::string text = "type " + std::string(size, 'x') + "\n"; // makes the buffer large
        std::size_t count = 0;
        for (; text.size() < 2 * size; ++count) {
            text += row.piece;
        }
        EXPECT_EQ(matcherEvents(text).size(), 1 + row.matches * (row.matchesEach ? count : 1)) << row.piece;
    }
}

TEST(Matcher, AgreesWithTheSimpleMatcherOnRealModels) {
    const std::vector<std::filesystem::path> models = realModels();
    if (models.empty()) {
        GTEST_SKIP() << noRealModels;
    }
    for (std::size_t index = 0; index < models.size(); ++index) {
        const VectorCode& code = vectorCodes()[index % vectorCodes().size()];
        SCOPED_TRACE(testing::Message() << models[index] << ", " << code.instructions);
        const std::string text = contents(models[index]);
        EXPECT_EQ(simpleEvents(text), matcherEvents(text, 16384, 8192, code));
    }
}

} // namespace
} // namespace rose::test
