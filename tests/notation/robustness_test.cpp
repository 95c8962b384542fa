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

TEST(Robustness, RealModelsAreSound) {
    for (const auto& path : rose::test::realModels()) {
        EXPECT_EQ(test::damagesOf(rose::test::contents(path)), std::vector<std::string>{}) << path;
    }
}

} // namespace
