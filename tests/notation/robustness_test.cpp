#include "scanner/RealModels.h"
#include "support/NotationEvents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <regex>

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

std::string at(const Place& place) {
    return " " + std::to_string(place.offset) + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
}

/// What a line can say of an event, on a line of its own. What an event does not say is empty.
std::string stepOf(const Event& event) {
    std::string step = event.isProperty() ? std::string(event.key) + at(event.keyPlace) + "\n" : "";
    const bool isNested = event.construct != Construct::object && event.construct != Construct::list;
    const bool isValue = event.construct == Construct::value;
    if (event.kind == EventKind::damage) {
        return step + "!" + damageWord(event.damage->kind) + at(event.damage->place) + "\n";
    }
    if (event.kind == EventKind::start) {
        step += isNested ? "" : "(" + std::string(event.text) + at(event.place);
        step += isValue ? "<" + std::string(event.text) + "\n" : "";
        for (const Name& name : event.names) {
            step += " '" + std::string(name.text) + "'";
        }
        return step + (isNested ? "" : " @" + std::string(event.reference) + "\n");
    }
    if (event.kind == EventKind::end) {
        return step + (event.construct == Construct::object ? ")" + std::to_string(event.end) + "\n" : "");
    }
    step += event.kind == EventKind::location ? "=" + std::string(event.y) + "\n" : "";
    return step + "=" + std::string(event.text) + (event.kind == EventKind::text ? at(event.place) : "") + "\n";
}

std::string stepsOf(const Line& line) {
    std::string steps = line.key.empty() ? "" : std::string(line.key) + at(line.place) + "\n";
    if (line.isStart()) {
        steps += "(" + std::string(line.text) + at(line.valuePlace());
        for (const std::string_view name : line.names) {
            steps += line.isObject() && name.data() != nullptr ? " '" + std::string(name) + "'" : "";
        }
        steps += " @" + (line.isObject() ? std::string(line.reference) : "") + "\n";
    } else if (line.kind != EventKind::end) {
        steps += line.construct == Construct::value ? "<Text\n" : "";
        steps += line.kind == EventKind::location ? "=" + std::string(line.y) + "\n" : "";
        steps += "=" + std::string(line.text) + (line.kind == EventKind::text ? at(line.valuePlace()) : "") + "\n";
    }
    for (std::uint64_t end = 0; end < line.ends; ++end) {
        steps += (line.objectEnds >> end & 1U) != 0 ? ")" + std::to_string(line.endsBegin + end + 1) + "\n" : "";
    }
    return steps;
}

/// The steps of a text; `linesRead`, unless null, has lines read whole and receives their number.
std::string stepsOf(std::string_view text, const Reader::Settings& settings, std::size_t* linesRead) {
    MemorySource source(text, 777);
    Reader reader(source, settings);
    std::string steps;
    for (;;) {
        if (const Line* line = linesRead != nullptr ? reader.nextLine() : nullptr) {
            steps += stepsOf(*line);
            ++*linesRead;
        } else if (reader.next()) {
            steps += stepOf(reader.event());
        } else {
            return steps;
        }
    }
}

enum class Skims : std::uint8_t { nothing, objects, properties };

/// The number of properties, objects and damages, when that is skimmed wherever it is possible.
std::array<std::size_t, 3> countsOf(std::string_view text, Skims skims) {
    MemorySource source(text);
    Reader reader(source);
    std::array<std::size_t, 3> counts{};
    const auto takeObject = [&](std::string_view kind, const Place&, std::size_t) {
        const bool isRead = kind != "Class";
        counts[1] += isRead ? 1 : 0;
        return isRead;
    };
    const auto takeProperty = [&](std::string_view key, const Place& place) {
        EXPECT_EQ(text.substr(place.offset, key.size()), key);
        EXPECT_EQ(text[place.offset - place.column], '\n') << key;
        const bool isRead = key != "quid";
        counts[0] += isRead ? 1 : 0;
        return isRead;
    };
    for (;;) {
        if (skims == Skims::objects) {
            counts[0] += reader.skim(UINT64_MAX, takeObject, {}).properties;
        } else if (skims == Skims::properties) {
            reader.skim(UINT64_MAX, {}, takeProperty);
        }
        if (!reader.next()) {
            return counts;
        }
        const Event& event = reader.event();
        counts[0] += event.isProperty() ? 1 : 0;
        counts[1] += event.kind == EventKind::start && event.construct == Construct::object ? 1 : 0;
        counts[2] += event.kind == EventKind::damage ? 1 : 0;
    }
}

/// The text, and the text with some of its bytes lost, doubled or overwritten.
std::vector<std::string> damagedVersions(const std::string& text) {
    std::mt19937 random(1);
    std::vector<std::string> texts{text};
    for (int version = 0; version < 200; ++version) {
        std::string changed = text;
        for (int change = 0; change < 20; ++change) {
            static constexpr std::string_view marks = "()\"\n\r|@\\#;,/ \tA0-\x7F\x80";
            changed.replace(random() % changed.size(), random() % 3, 1, marks[random() % marks.size()]);
        }
        texts.push_back(std::move(changed));
    }
    return texts;
}

/// Texts of several lines in all places, for lines that are skimmed.
constexpr std::string_view linesOfTexts = "(object A\n"
                                          "    text \t\n|one\n|two \t)\n\n    after \t@3\n"
                                          "    value \t(value Text \n|three\n    )\n"
                                          "    a_key_that_is_longer_than_all_that_are_usual \t(-1, 20)\n"
                                          "    odd \t\n|four\n    x \t1 |five\n"
                                          "    parts \t(list P\n\t(object B \"n\" @12\n\t    last \t\n|six\n\t)))\n";

/// Objects with the same contents, which are compared with each other when they are skimmed, and with nearly the same.
constexpr std::string_view linesOfBlocks = "(object A\n"
                                           "    font \t(object F\n\tsize 9\n\tface \"A\")\n"
                                           "    font \t(object F\n\tsize 9\n\tface \"A\")\n"
                                           "    parts \t(list P\n\t(object B\n\tsize 9\n\tface \"A\")\n"
                                           "\t(object B\n\tsize 9\n\tface \"A\"\n\tlast 1))\n"
                                           "    font \t(object F\n\tsize 9\n\tface \"A\"))\n"
                                           "(object A\n    font \t(object F\n\tsize 9\n\tface \"A\"))\n";

/// Lines that are read whole stand for the events that they take the place of, and are most lines of sound files.
TEST(Robustness, LinesReadWholeStandForTheirEvents) {
    std::vector<std::string> texts = examples();
    for (const std::string& whole : examples()) {
        texts.push_back(std::regex_replace(whole, std::regex("\n"), "\r\n"));
    }
    for (const std::string_view lines : {linesOfTexts, linesOfBlocks}) {
        for (const std::string& text : damagedVersions(std::string(lines))) {
            for (const Skims skims : {Skims::objects, Skims::properties}) {
                ASSERT_EQ(countsOf(text, skims), countsOf(text, Skims::nothing)) << text;
            }
        }
    }
    for (const std::string& whole : texts) {
        for (const std::string& text : damagedVersions(whole)) {
            for (const std::size_t window : {std::size_t{256}, std::size_t{65536}}) {
                const Reader::Settings settings{.window = window, .deepest = 12};
                std::size_t lines = 0;
                ASSERT_EQ(stepsOf(text, settings, &lines), stepsOf(text, settings, nullptr));
            }
            for (const Skims skims : {Skims::objects, Skims::properties}) {
                ASSERT_EQ(countsOf(text, skims), countsOf(text, Skims::nothing));
            }
        }
        std::size_t lines = 0;
        EXPECT_FALSE(stepsOf(whole, {}, &lines).empty());
        EXPECT_GT(lines, static_cast<std::size_t>(std::ranges::count(whole, '\n')) * 8 / 10);
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
