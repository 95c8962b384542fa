#include "scanner/Matcher.h"

#include "scanner/Tails.h"

#include <algorithm>

namespace rose {

bool Matcher::next(Match& match) {
    if (input_.takeRewritten()) {
        place_ = filter_.end();
        searched_ = input_.cursor();
    }
    for (;;) {
        while (place_ != filter_.end()) {
            const Outcome outcome = tryFamily(*place_, match);
            if (outcome == Outcome::undecided) {
                input_.refill(match.begin);
                continue;
            }
            ++place_;
            if (outcome == Outcome::matched) {
                return true;
            }
        }
        if (!searchOn()) {
            return false;
        }
    }
}

/// Looks for keywords in the next block; false at the end of the input.
bool Matcher::searchOn() {
    searched_ = std::max(searched_, input_.cursor());
    const Position stop = input_.ended() ? input_.limit() : input_.limit() - lookahead;
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
Position Matcher::undecidedFrom() const {
    constexpr Position reach = KeywordFilter::reach + keywords::longestPrefix;
    const Position literal = std::max(searched_ - reach, input_.cursor());
    return literal - bytes::blanksBefore(input_.at(literal), '\t', literal - input_.cursor());
}

Matcher::Outcome Matcher::tryFamily(const KeywordFilter::Place& place, Match& match) const {
    const keywords::Family& family = keywords::families[place.family];
    const char* const word = input_.at(block_ + place.offset);
    for (const Probe *probe = &probes[family.first], *end = probe + family.count; probe != end; ++probe) {
        if (probe->isAt(word)) {
            const Outcome outcome = tryProbe(*probe, word, match);
            if (outcome != Outcome::mismatched) {
                return outcome;
            }
        }
    }
    return Outcome::mismatched;
}

/// Grows the match of `probe` around its keyword. The match's `begin` is stored as soon as the lead is known.
Matcher::Outcome Matcher::tryProbe(const Probe& probe, const char* word, Match& match) const {
    const Window window{input_.at(input_.cursor()), input_.at(input_.limit()), input_.ended()};
    const char* const literal = word - probe.prefixLength;
    const std::ptrdiff_t room = literal - window.begin;
    const std::ptrdiff_t lead =
        room < 0 ? -1 : bytes::blanksBefore(literal, probe.leadBlank, std::min(room, probe.leadMaximum));
    if (lead < probe.leadMinimum) {
        return Outcome::mismatched;
    }
    match.rule = patterns[probe.index].number;
    match.begin = input_.cursor() + (literal - lead - window.begin);
    const char* end = word + probe.keywordLength;
    const Literal& text = patterns[probe.index].literal;
    if (!text.second.empty()) {
        end = secondLiteralEnd(text, end, window);
    }
    const auto unfinished = [&] { return end == window.limit && !window.ended; };
    if (end != nullptr && !unfinished()) {
        end = tailEnd(probe.tail, end, window);
    }
    if (end == nullptr) {
        return Outcome::mismatched;
    }
    if (unfinished()) {
        return Outcome::undecided;
    }
    match.end = match.begin + (end - (literal - lead));
    return Outcome::matched;
}

} // namespace rose
