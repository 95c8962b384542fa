#pragma once

#include "scanner/InputLayer.h"
#include "scanner/KeywordFilter.h"
#include "scanner/Keywords.h"

#include <cstdint>

namespace rose {

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
    explicit Matcher(InputLayer& input) : input_(input), searched_(input.positionOf(input.cursor())) {}

    /// Makes the next match the input's current one and returns its rule's number; 0 at the end of the input, which
    /// then is consumed. The match that was current ends.
    int next();

private:
    bool searchOn();
    const char* undecidedFrom() const;

    /// What must be buffered behind a place before it is looked at: the keyword and a byte behind it.
    static constexpr Position lookahead = keywords::longestKeyword + 1;

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
    for (int rule = matcher.next(); rule != 0; rule = matcher.next()) {
        sink(rule, yytext, yyleng);
    }
}

} // namespace rose
