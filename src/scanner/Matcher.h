#pragma once

#include "scanner/InputLayer.h"
#include "scanner/KeywordFilter.h"
#include "scanner/Keywords.h"
#include "scanner/Probe.h"

#include <cstdint>

namespace rose {

/// One match of a keyword pattern: the rule's number and the matched bytes.
struct Match {
    int rule;
    Position begin;
    Position end;
};

/// Finds the matches of the rule table in an input, one after the other: at every position that no match has consumed
/// the longest text that matches a pattern; positions where none matches are skipped.
///
/// Keywords are found first (KeywordFilter), then compared in full, then the match is grown to both sides. No two
/// patterns match at the same place, so that the first keyword whose match is whole decides. The time taken is in step
/// with the length of the input, whatever it holds.
///
/// Between two calls of `next` the input may be consumed, and bytes may be put back, by `get` and `unget`.
class Matcher {
public:
    explicit Matcher(InputLayer& input) : input_(input), searched_(input.cursor()) {}

    /// Moves to the next match and stores it; false at the end of the input, which is then consumed.
    bool next(Match& match);

private:
    enum class Outcome : std::uint8_t { matched, mismatched, undecided };

    bool searchOn();
    Position undecidedFrom() const;
    Outcome tryFamily(const KeywordFilter::Place& place, Match& match) const;
    Outcome tryProbe(const Probe& probe, const char* word, Match& match) const;

    /// What must be buffered behind a place before it is looked at.
    static constexpr Position lookahead = keywords::longestKeyword + KeywordFilter::overlap + 1;

    InputLayer& input_;
    KeywordFilter filter_;
    const KeywordFilter::Place* place_ = filter_.end();
    Position block_ = 0;    // where the filter's block starts
    Position searched_ = 0; // how far the filter has come
};

/// Reports every match that is left in `input` to `sink(rule, text, length)`. The text is NUL-terminated and is the
/// current match until `sink` returns.
template <class Sink>
void scan(InputLayer& input, Sink&& sink) {
    Matcher matcher(input);
    for (Match match{}; matcher.next(match);) {
        input.beginMatch(match.begin, match.end);
        sink(match.rule, yytext, yyleng);
        input.endMatch();
    }
}

} // namespace rose
