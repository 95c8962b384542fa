#include "FlexJudge.h"
#include "FlexScanner.h"
#include "MatchEvent.h"

namespace {

std::string_view judgedText;
std::size_t judgedPlace;
rose::test::MatchEvents judgedEvents;

} // namespace

std::size_t flexJudgeMatch(int rule, const char* text, std::size_t length) {
    judgedPlace += length;
    if (rule == 0) {
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
    flexScanText(text.data(), text.size());
    return std::move(judgedEvents);
}

} // namespace rose::test
