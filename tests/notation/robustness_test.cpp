#include "scanner/RealModels.h"
#include "support/NotationEvents.h"

#include <gtest/gtest.h>

namespace {

using namespace notation;

std::vector<std::string> examples() {
    return {rose::test::contents(PETAL_EXAMPLES "/bookshop.mdl"),
            rose::test::contents(PETAL_EXAMPLES "/everything.mdl")};
}

TEST(Robustness, AFileCutAnywhereIsReadUpToThere) {
    for (const std::string& whole : examples()) {
        ASSERT_FALSE(whole.empty());
        EXPECT_EQ(test::damagesOf(whole), std::vector<std::string>{});
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const std::string_view cut = std::string_view(whole).substr(0, size);
            const std::vector<std::string> damages = test::damagesOf(cut);
            ASSERT_LE(damages.size(), 1U) << size << damages.back();
            ASSERT_TRUE(damages.empty() || damages[0].ends_with(" truncated")) << size << damages[0];
        }
    }
}

/// A lost or surplus parenthesis displaces next to nothing of what follows.
TEST(Robustness, OneParenthesisCostsAFewDamagesAndNoObject) {
    const auto objectsIn = [](std::string_view text) {
        const std::string events = test::eventsOf(text);
        std::size_t count = 0;
        for (std::size_t at = 0; (at = events.find("<object ", at)) != std::string::npos; ++at) {
            ++count;
        }
        return count;
    };
    for (const std::string& whole : examples()) {
        const std::size_t objects = objectsIn(whole);
        for (std::size_t at = whole.find(')'); at != std::string::npos; at = whole.find(')', at + 1)) {
            std::string lost = whole;
            lost.erase(at, 1);
            std::string surplus = whole;
            surplus.insert(at, 1, ')');
            for (const std::string& text : {lost, surplus}) {
                EXPECT_EQ(objectsIn(text), objects) << at;
                EXPECT_LE(test::damagesOf(text).size(), 3U) << at;
            }
        }
    }
}

/// The usual events are read in a way of their own, which must agree with the other one wherever it takes over.
TEST(Robustness, UsualEventsAreTheSameReadSlowly) {
    constexpr std::string_view forms = "(object A \"n\" \"m\" @7\n"
                                       "\tk \"a\\\"b\\\\\" l -12 m (1, -2) n @3 o TRUE p Word q 0.5\n"
                                       "    r\t(list L (object B \"a longer name\") (value T \"x\")\r\n"
                                       "\t    \"y\" 4 @5 (6,7))\n"
                                       "\tdocumentation \n|one\n|two\r\n\t|\n"
                                       "\tt (value U |three\n) u (\"V\" 8))\n";
    using namespace std::string_view_literals;
    constexpr std::string_view insertions[] = {
        "("sv,      ")"sv,     "\""sv,
        "\\"sv,     "|"sv,     "@"sv,
        ","sv,      "#"sv,     ";"sv,
        "//"sv,     "\n"sv,    "\r"sv,
        "\r\n"sv,   "\t"sv,    " "sv,
        "\v"sv,     "\0"sv,    "\x1A"sv,
        "\x7F"sv,   "\xC3"sv,  "-"sv,
        "9"sv,      "."sv,     "x"sv,
        "\n|"sv,    "\n\t "sv, "\r|"sv,
        "( "sv,     "(1, 2"sv, "(object "sv,
        "(list "sv, "k "sv,    "\n|\n(list L|"sv,
    };
    Reader::Settings small;
    small.window = 256;
    small.longestName = 12;
    small.deepest = 3;
    for (const std::string_view inserted : insertions) {
        for (std::size_t at = 0; at <= forms.size(); ++at) {
            std::string text(forms);
            text.insert(at, inserted);
            ASSERT_EQ(test::slowDifference(text), "") << text;
            ASSERT_EQ(test::slowDifference(text, small), "") << text;
        }
    }
}

TEST(Robustness, RealModelsAreSound) {
    for (const auto& path : rose::test::realModels()) {
        const std::string text = rose::test::contents(path);
        EXPECT_EQ(test::damagesOf(text), std::vector<std::string>{}) << path;
        EXPECT_EQ(test::slowDifference(text), "") << path;
    }
}

} // namespace
