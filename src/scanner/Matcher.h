#pragma once

#include "scanner/Bytes.h"
#include "scanner/InputLayer.h"
#include "scanner/Keywords.h"
#include "scanner/VectorCode.h"

#include <memory>

namespace rose {

/// Finds the matches of the rule table in an input, one after the other: at every position that no match has consumed,
/// the longest text that matches a pattern. Positions where none matches are skipped.
///
/// First it finds the places where a keyword starts, a block at a time; then it compares the whole keyword and extends
/// the match to both sides. No two patterns match at the same place, so that the first keyword whose match is whole
/// decides. The time taken is proportional to the length of the input, whatever its content.
///
/// Between two calls of `next` the input may be consumed, and bytes may be put back, by `get` and `unget`.
class Matcher {
public:
    explicit Matcher(InputLayer& input, const VectorCode& code = vectorCodes().front())
        : input_(input), code_(code), searched_(input.positionOf(input.cursor())) {}

    /// Makes the next match the input's current one and returns its rule's number; 0 at the end of the input, which
    /// then is consumed. The match that was current ends.
    int next() {
        input_.endMatch();
        if (match_ < batch_.count && !input_.isRewritten()) {
            if (const int rule = giveOut(); rule != 0) {
                return rule;
            }
        }
        return nextOfAnotherBatch();
    }

private:
    /// Makes the next match of the batch the current one unless an action has consumed a part of it; then 0.
    int giveOut() {
        const Match& match = batch_.matches[match_];
        char* const block = input_.at(block_);
        if (block + match.begin < input_.cursor()) {
            return 0;
        }
        ++match_;
        input_.beginMatch(block + match.begin, block + match.end);
        return match.rule;
    }
    int nextOfAnotherBatch();
    void forgetBlock();
    void growOn();
    bool searchOn();
    const char* undecidedFrom() const;

    /// How many bytes after a place must be buffered before it is examined: the keyword and the byte after it.
    static constexpr Position lookahead = keywords::longestKeyword + 1;

    InputLayer& input_;
    const VectorCode& code_;
    Position searched_;     // how far keywords have been looked for
    Position block_ = 0;    // where the block starts that the places and matches are of
    std::size_t place_ = 0; // the first of the places that matches have not been made of
    std::size_t match_ = 0; // the first of the batch that has not been given out
    MatchBatch batch_;
    PlaceList places_;
};

/// Reports every match that is left in `input` to `sink(rule, text, length)`. The text is NUL-terminated and is the
/// current match until `sink` returns. Throws `std::bad_alloc`, and what `sink` throws.
template <class Sink>
void scan(InputLayer& input, Sink&& sink, const VectorCode& code = vectorCodes().front()) {
    // On the heap: its lists are half of a small stack, and profilers do not follow frames of that size.
    const auto matcher = std::make_unique<Matcher>(input, code);
    for (int rule = matcher->next(); rule != 0; rule = matcher->next()) {
        sink(rule, yytext, yyleng);
    }
}

} // namespace rose
