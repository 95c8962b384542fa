// The matcher against a scanner that flex makes of the same rule table.

#include "FlexJudge.h"
#include "MatchEvent.h"
#include "RandomTexts.h"
#include "RealModels.h"

#include <gtest/gtest.h>

namespace {

std::string_view judgedText;
std::size_t judgedPlace;
rose::test::MatchEvents judgedEvents;

} // namespace

std::size_t flexJudgeMatch(int rule, const char* text, std::size_t length) {
    judgedPlace += length;
    if (rule > 64) {
        return 0;
    }
    judgedEvents.push_back({rule, std::string(text, length)});
    rose::test::MatchEvent& event = judgedEvents.back();
    const std::size_t end = judgedPlace;
    if (rose::test::readsLines(rule, event.bytes)) {
        event.lines = rose::test::linesBehind(judgedText, judgedPlace);
    }
    return judgedPlace - end;
}

namespace rose::test {

MatchEvents flexEvents(std::string_view text) {
    judgedText = text;
    judgedPlace = 0;
    judgedEvents.clear();
    flexJudgeScan(text.data(), text.size());
    return std::move(judgedEvents);
}

namespace {

TEST(FlexJudge, AgreesOnRandomTexts) {
    for (std::uint32_t seed = 1'000'000; seed < 1'001'000; ++seed) {
        const std::string text = randomText(seed);
        ASSERT_EQ(matcherEvents(text, 1 + seed % 300, 1 + seed % 97), flexEvents(text)) << "seed " << seed;
    }
}

TEST(FlexJudge, AgreesOnRealModels) {
    const std::vector<std::filesystem::path> models = realModels();
    if (models.empty()) {
        GTEST_SKIP() << noRealModels;
    }
    for (const std::filesystem::path& path : models) {
        const std::string text = contents(path);
        ASSERT_EQ(matcherEvents(text), flexEvents(text)) << path;
    }
}

} // namespace
} // namespace rose::test
