#include "MatchEvent.h"
#include "scanner/Keywords.h"
#include "scanner/VectorCode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace rose::test {
namespace {

/// Offset and number of the first probe.
using Places = std::vector<std::pair<std::size_t, std::size_t>>;

/// Where in the `size` bytes from `begin` on a family's letters stand, or even one of its keywords, and before them
/// what passes for a blank, if they need one.
Places placesIn(std::string_view text, std::size_t begin, std::size_t size, bool wholeKeywords) {
    const std::string_view passForBlanks("\0\1\b\t !()", 8);
    Places places;
    for (std::size_t at = begin; at < begin + size; ++at) {
        const std::string_view rest = text.substr(at);
        for (const keywords::Family& family : keywords::families) {
            const auto* const first = keywords::byFamily.begin() + family.first;
            const bool isKeyword = std::any_of(first, first + family.count, [&](std::uint8_t index) {
                return rest.starts_with(keywords::keyword(patterns[index]));
            });
            if (rest.starts_with(family.start) && (isKeyword || !wholeKeywords) &&
                (!family.followsBlank || passForBlanks.find(text[at - 1]) != std::string_view::npos)) {
                places.emplace_back(at - begin, family.first);
            }
        }
    }
    return places;
}

/// Places too many cost time and nothing else: the matcher's tests do not see them.
TEST(VectorCode, FindsAllKeywordsAndHardlyAnythingElse) {
    std::string text;
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        text += randomText(seed);
    }
    for (int byte = 0; byte < 256; ++byte) {
        text += std::string(1, static_cast<char>(byte)) + "label" + static_cast<char>(byte) + "type location lines";
    }
    text += std::string(VectorCode::readBehind, '\0');
    const auto list = std::make_unique<PlaceList>();
    std::size_t begin = VectorCode::readBefore;
    for (std::size_t size = 1; begin + size + VectorCode::readBehind <= text.size();
         begin += size, size = 1 + (size * 7 + begin) % blockSize) {
        const Places least = placesIn(text, begin, size, true);
        const Places most = placesIn(text, begin, size, false);
        for (const VectorCode& code : vectorCodes()) {
            code.findPlaces(text.data() + begin, size, *list);
            Places found;
            for (std::size_t index = 0; index < list->count; ++index) {
                found.emplace_back(list->places[index].offset, list->places[index].probe);
            }
            EXPECT_TRUE(std::includes(found.begin(), found.end(), least.begin(), least.end())) << code.instructions;
            EXPECT_TRUE(std::includes(most.begin(), most.end(), found.begin(), found.end())) << code.instructions;
        }
    }
    EXPECT_GT(begin, 10 * blockSize) << "the text is too short to tell";
}

} // namespace
} // namespace rose::test
