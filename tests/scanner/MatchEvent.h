#pragma once

#include "scanner/VectorCode.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace rose::test {

/// What a scanner reported: a rule and the bytes it matched, with the multi-line text that the documentation and label
/// rules read behind their match.
struct MatchEvent {
    int rule = 0;
    std::string bytes;
    std::string lines{};

    bool operator==(const MatchEvent&) const = default;
};

using MatchEvents = std::vector<MatchEvent>;

/// Whether `rule` reads a multi-line text behind the match `bytes`.
inline bool readsLines(int rule, const std::string& bytes) {
    const std::string_view text = bytes.c_str();
    return (rule == 33 || rule == 34) && text.find_first_of("\"@") == std::string_view::npos;
}

/// The matcher's events for `text`, with a new buffer of `bufferSize` bytes that is filled by reads of `readSize`.
MatchEvents matcherEvents(std::string_view text, std::size_t bufferSize = 16384, std::size_t readSize = 8192,
                          const VectorCode& code = vectorCodes().front());

/// The events of a scanner that tries every pattern at every position.
MatchEvents simpleEvents(std::string_view text);

/// The multi-line text that stands in `text` at `place`, which then moves behind it.
std::string linesBehind(std::string_view text, std::size_t& place);

/// A text of keywords, pieces of keywords and their surroundings, the same for the same seed.
std::string randomText(std::uint32_t seed);

/// `bytes` with everything unprintable escaped.
std::string readable(std::string_view bytes);

inline void PrintTo(const MatchEvent& event, std::ostream* out) {
    *out << event.rule << " [" << readable(event.bytes) << "] [" << readable(event.lines) << "]";
}

} // namespace rose::test
