#include "scanner/Matcher.h"

#include "scanner/RuleTable.h"

#include <algorithm>

namespace rose {

// The matcher's preconditions on the rule table, checked by the compiler.

namespace {

constexpr std::string_view blankBytes = " \t";

/// A rule is found by its number.
consteval bool areNumberedInOrder() {
    for (std::size_t index = 0; index < ruleCount; ++index) {
        if (patterns[index].number != static_cast<int>(index) + 1) {
            return false;
        }
    }
    return true;
}

/// The first and last bytes of a literal are not blanks, and no byte of it ends a tail.
consteval bool areLiteralsPlain() {
    return std::all_of(patterns.begin(), patterns.end(), [](const Pattern& pattern) {
        const auto isPlain = [](std::string_view text) {
            return text.find_first_of(std::string_view("\"\n\t\0", 4)) == std::string_view::npos &&
                   blankBytes.find(text.front()) == std::string_view::npos &&
                   blankBytes.find(text.back()) == std::string_view::npos;
        };
        return isPlain(pattern.literal.first) && (pattern.literal.second.empty() || isPlain(pattern.literal.second));
    });
}

consteval bool needsBlankAfter(const Pattern& pattern) {
    return pattern.tail == Tail::valueTail || pattern.tail == Tail::flagTail || pattern.tail == Tail::spaceTail ||
           pattern.tail == Tail::viewTail;
}

/// No two patterns match at one place: a literal that begins another one needs a blank where the other has none.
consteval bool areExclusive() {
    for (const Pattern& shorter : patterns) {
        for (const Pattern& longer : patterns) {
            const std::string_view start = shorter.literal.first;
            const std::string_view whole = longer.literal.first;
            if (shorter.number != longer.number && whole.starts_with(start) &&
                (whole.size() == start.size() || !needsBlankAfter(shorter) || whole[start.size()] == ' ')) {
                return false;
            }
        }
    }
    return true;
}

static_assert(areNumberedInOrder());
static_assert(areLiteralsPlain());
static_assert(areExclusive());

} // namespace

namespace {

static_assert(InputLayer::backMargin >= VectorCode::readBehind);
static_assert(InputLayer::frontMargin >= VectorCode::readBefore);

/// No prefix contains the first letters of a keyword: keywords are found in the order of their matches.
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

} // namespace

int Matcher::nextOfAnotherBatch() {
    if (input_.takeRewritten()) {
        forgetBlock();
    }
    if (match_ < batch_.count) {
        // An action has consumed the beginning of this match: grow the matches from here anew.
        place_ = batch_.matches[match_].place;
    }
    for (;;) {
        if (place_ < places_.count) {
            growOn();
            if (batch_.count > 0) {
                return giveOut();
            }
        } else if (!searchOn()) {
            return 0;
        }
    }
}

/// Discards the current block after the input was rewritten.
void Matcher::forgetBlock() {
    batch_.count = match_ = places_.count = place_ = 0;
    searched_ = input_.positionOf(input_.cursor());
}

/// Makes the next batch of matches, or reads on if that takes more text.
void Matcher::growOn() {
    const Window window{input_.cursor(), input_.limit(), input_.ended()};
    code_.growMatches(places_, place_, input_.at(block_), window, batch_);
    match_ = 0;
    if (batch_.count == 0 && batch_.undecided != nullptr) {
        input_.refill(batch_.undecided);
    }
}

/// Looks for places in the next block; false at the end of the input.
bool Matcher::searchOn() {
    const Position limit = input_.positionOf(input_.limit());
    const Position stop = input_.ended() ? limit : limit - lookahead;
    searched_ = std::max(searched_, input_.positionOf(input_.cursor()));
    if (searched_ < stop) {
        const Position size = std::min<Position>(stop - searched_, blockSize);
        code_.findPlaces(input_.at(searched_), static_cast<std::size_t>(size), places_);
        block_ = searched_;
        searched_ += size;
        place_ = 0;
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
    const char* const cursor = input_.cursor();
    const char* const literal =
        input_.at(std::max(searched_ - Position{keywords::longestPrefix}, input_.positionOf(cursor)));
    const char* begin = literal;
    while (begin > cursor && bytes::isBlank(begin[-1])) {
        --begin;
    }
    return begin;
}

} // namespace rose
