#include "scanner/Matcher.h"

#include <algorithm>

namespace rose {

namespace {

static_assert(InputLayer::backMargin >= VectorCode::readBehind);
static_assert(InputLayer::frontMargin >= VectorCode::readBefore);

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

} // namespace

int Matcher::nextOfAnotherBatch() {
    if (input_.takeRewritten()) {
        forgetBlock();
    }
    if (match_ < batch_.count) {
        // An action has consumed what this match began with: what follows is to be grown anew.
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

/// For when the text is no longer what was searched.
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
