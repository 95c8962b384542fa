#include "scanner/Matcher.h"

#include "scanner/ByteRuns.h"
#include "scanner/Probe.h"
#include "scanner/Tails.h"

#include <algorithm>

namespace rose {

namespace {

static_assert(InputLayer::backMargin >= KeywordFilter::overread);
static_assert(InputLayer::frontMargin >= KeywordFilter::reach + 8); // a probe loads eight bytes before the keyword

/// No prefix holds the first letters of a keyword: keywords come in the order of the matches that they belong to.
consteval bool areKeywordsInOrder() {
    for (const Pattern& outer : patterns) {
        const std::string_view prefix = outer.literal.first.substr(0, keywords::prefixLength(outer));
        for (const keywords::Family& family : keywords::families) {
            if (prefix.find(family.start.substr(0, keywords::startLength)) != std::string_view::npos) {
                return false;
            }
        }
    }
    return true;
}
static_assert(areKeywordsInOrder());

enum class Outcome : std::uint8_t { matched, mismatched, undecided };

/// A match as far as it is known.
struct Growth {
    const char* begin;
    const char* end;
    int rule;
};

/// Grows the match of `probe` around its keyword. Its `begin` is known in every outcome but a mismatch.
Outcome grow(const Probe& probe, const char* word, const Window& window, Growth& growth) {
    const char* const literal = word - probe.prefixLength;
    // Negative for a keyword that has been consumed: then so is the lead, which is too short for any pattern.
    const std::ptrdiff_t room = literal - window.begin;
    const std::ptrdiff_t lead = bytes::blanksBefore(literal, probe.lead.otherBlank, std::min(room, probe.lead.maximum));
    if (lead < probe.lead.minimum) {
        return Outcome::mismatched;
    }
    growth.rule = probe.rule;
    growth.begin = literal - lead;
    const char* end = word + probe.keywordLength;
    if (!probe.secondPart.empty()) {
        end = secondPartEnd(probe.secondPart, end, window);
        if (end == nullptr) {
            return Outcome::mismatched;
        }
        if (end == window.limit && !window.ended) {
            return Outcome::undecided;
        }
    }
    end = probe.tail == Tail::valueTail ? runTailEnd<>(true, '\t', end, window) : tailEnd(probe.tail, end, window);
    if (end == nullptr) {
        return Outcome::mismatched;
    }
    growth.end = end;
    return end == window.limit && !window.ended ? Outcome::undecided : Outcome::matched;
}

Outcome growAny(const keywords::Family& family, const char* word, const Window& window, Growth& growth) {
    const Probe* const end = probes.data() + family.first + family.count;
    for (const Probe* probe = end - family.count; probe != end; ++probe) {
        if (probe->isAt(word)) {
            if (const Outcome outcome = grow(*probe, word, window, growth); outcome != Outcome::mismatched) {
                return outcome;
            }
        }
    }
    return Outcome::mismatched;
}

} // namespace

int Matcher::next() {
    input_.endMatch();
    if (input_.takeRewritten()) {
        place_ = filter_.end();
        searched_ = input_.positionOf(input_.cursor());
    }
    for (;;) {
        const Window window{input_.cursor(), input_.limit(), input_.ended()};
        const char* const block = input_.at(block_);
        Outcome outcome = Outcome::mismatched;
        Growth growth{};
        while (outcome == Outcome::mismatched && place_ != filter_.end()) {
            outcome = growAny(keywords::families[place_->family], block + place_->offset, window, growth);
            ++place_;
        }
        if (outcome == Outcome::matched) {
            char* const begin = input_.cursor() + (growth.begin - window.begin);
            input_.beginMatch(begin, begin + (growth.end - growth.begin));
            return growth.rule;
        }
        if (outcome == Outcome::undecided) {
            --place_;
            input_.refill(growth.begin);
        } else if (!searchOn()) {
            return 0;
        }
    }
}

/// Looks for keywords in the next block; false at the end of the input.
bool Matcher::searchOn() {
    const Position limit = input_.positionOf(input_.limit());
    const Position stop = input_.ended() ? limit : limit - lookahead;
    searched_ = std::max(searched_, input_.positionOf(input_.cursor()));
    if (searched_ < stop) {
        const Position size = std::min<Position>(stop - searched_, KeywordFilter::blockSize);
        filter_.search(input_.at(searched_), static_cast<std::size_t>(size));
        block_ = searched_;
        searched_ += size;
        place_ = filter_.begin();
        return true;
    }
    if (input_.ended()) {
        input_.moveCursor(input_.limit());
        return false;
    }
    input_.refill(undecidedFrom());
    return true;
}

/// The first byte that a match may start with whose keyword has not been looked for.
const char* Matcher::undecidedFrom() const {
    constexpr Position reach = KeywordFilter::reach + keywords::longestPrefix;
    const char* const cursor = input_.cursor();
    const char* const literal = input_.at(std::max(searched_ - reach, input_.positionOf(cursor)));
    return literal - bytes::blanksBefore(literal, '\t', literal - cursor);
}

} // namespace rose
