#include "scanner/RealModels.h"
#include "support/NotationEvents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <random>

namespace {

using namespace notation;
using test::notationFault;
using namespace std::string_view_literals;

constexpr std::size_t contractStep = 16; // checking it takes several readings

std::string faultOf(std::string_view text) {
    return notationFault(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

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
            if (size % contractStep == 0) {
                ASSERT_EQ(faultOf(cut), "") << size;
            }
            const std::vector<std::string> damages = test::damagesOf(cut);
            ASSERT_LE(damages.size(), 1U) << size << damages.back();
            ASSERT_TRUE(damages.empty() || damages[0].ends_with(" truncated")) << size << damages[0];
        }
    }
}

/// What damages a file: parentheses and quotes lost or too many, other bytes, lines lost.
std::string damaged(std::string text, std::minstd_rand& random) {
    constexpr std::string_view bytes = "()\"\\|,@ \n\r\t#\0\1x5(object B)\""sv;
    for (auto count = random() % 5 + 1; count > 0; --count) {
        const std::size_t at = random() % text.size();
        switch (random() % 3) {
        case 0:
            text.erase(at, random() % 3 == 0 ? random() % 100 : 1);
            break;
        case 1:
            text.insert(at, 1, bytes[random() % bytes.size()]);
            break;
        default:
            text[at] = bytes[random() % bytes.size()];
        }
    }
    return text;
}

TEST(Robustness, DamagedFilesKeepTheContract) {
    constexpr unsigned seed = 20020610;
    std::minstd_rand random(seed);
    for (int round = 0; round < 300; ++round) {
        for (const std::string& whole : examples()) {
            const std::string text = damaged(whole, random);
            ASSERT_EQ(faultOf(text), "") << "round " << round << ":\n" << text;
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

constexpr std::string_view blanks = " \t";

/// A line without what stands in its quotes.
std::string unquoted(const std::string& line) {
    std::string result;
    bool inQuotes = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '"') {
            inQuotes = !inQuotes;
        } else if (inQuotes) {
            at += line[at] == '\\' ? 1 : 0;
        } else {
            result += line[at];
        }
    }
    return result;
}

/// Counts line by line, knowing nothing of nesting.
std::map<std::string, std::size_t> countedByLines(const std::string& text) {
    std::map<std::string, std::size_t> counts;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('|')) {
            continue;
        }
        line = unquoted(line);
        const std::size_t word = line.find_first_not_of(blanks);
        const bool isKey = word != 0 && word < line.size() &&
                           (line[word] == '_' || std::isalpha(static_cast<unsigned char>(line[word])) != 0);
        counts["properties"] += isKey && line.find_first_of(blanks, word) != std::string::npos ? 1 : 0;
        for (const char* construct : {"object", "list", "value"}) {
            const std::size_t at = line.find(std::string("(") + construct);
            if (at != std::string::npos) {
                const std::size_t kind =
                    std::min(line.find_first_not_of(blanks, line.find_first_of(" \t)", at)), line.size());
                ++counts[std::string(construct) + " " + line.substr(kind, line.find_first_of(" \t)", kind) - kind)];
            }
        }
    }
    return counts;
}

TEST(RealModels, AreSoundAndCountedRight) {
    const auto models = rose::test::realModels();
    if (models.empty()) {
        GTEST_SKIP() << rose::test::noRealModels;
    }
    for (const auto& path : models) {
        const std::string text = rose::test::contents(path);
        EXPECT_EQ(test::damagesOf(text), std::vector<std::string>{}) << path;
        std::map<std::string, std::size_t> counts;
        MemorySource source(text);
        Reader reader(source);
        constexpr const char* constructs[] = {"object ", "list ", "value "};
        while (reader.next()) {
            const Event& event = reader.event();
            if (event.kind == EventKind::start && event.construct != Construct::group) {
                ++counts[constructs[static_cast<std::size_t>(event.construct)] + std::string(event.text)];
            }
            counts["properties"] += event.isProperty() ? 1 : 0;
        }
        EXPECT_EQ(counts, countedByLines(text)) << path;
    }
}

} // namespace
