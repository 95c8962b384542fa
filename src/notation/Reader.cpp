#include "notation/Reader.h"

#include <algorithm>
#include <utility>

namespace notation {

namespace {

constexpr std::size_t smallestWindow = 256;
constexpr std::size_t mostWaiting = 64; // a head never needs as many

} // namespace

Reader::Reader(ByteSource& source, const Settings& settings)
    : settings_(settings), window_(source, std::max(settings.window, smallestWindow)), lexer_(window_) {}

// The action for a token, by its container: none, an object where the name of a property or its value may follow, or
// another construct.
Reader::Step Reader::stepFor(Row row, TokenKind token) {
    using R = Reader;
    static constexpr auto rows = std::to_array<std::array<Step, 6>>({
        // "("               ")"               ","              value              word              end of the file
        {&R::openConstruct, &R::surplusClose, &R::strayText, &R::strayText, &R::strayText, &R::finish}, // top
        {&R::openUnnamed, &R::close, &R::strayComma, &R::unnamedScalar, &R::key, &R::truncated},        // object
        {&R::openConstruct, &R::noValue, &R::strayComma, &R::scalar, &R::wordValue, &R::noValue},       // keyed
        {&R::openConstruct, &R::close, &R::strayComma, &R::scalar, &R::wordInList, &R::truncated},      // list
        {&R::openConstruct, &R::close, &R::strayComma, &R::scalar, &R::wordInList, &R::truncated},      // value
        {&R::openConstruct, &R::close, &R::strayComma, &R::scalar, &R::wordInGroup, &R::truncated},     // group
    });
    using enum Column;
    static constexpr auto columns = std::to_array<Column>({
        open, close, comma, scalar, scalar, scalar, scalar, scalar, word, end, end, // as in `TokenKind`
    });
    return rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(columns[static_cast<std::size_t>(token)])];
}

Reader::Row Reader::row() const {
    constexpr std::array rows{Row::object, Row::list, Row::value, Row::group}; // as in `Construct`
    if (nesting_.isEmpty()) {
        return Row::top;
    }
    return isKeyed_ ? Row::keyed : rows[static_cast<std::size_t>(nesting_.innermost().construct)];
}

bool Reader::next() {
    leaveLines();
    return (consumes_ && settings_.isFast && usualEvent()) || anyEvent();
}

// Makes the next event from tokens.
bool Reader::anyEvent() {
    clearEvent(EventKind::damage, {}, {}, {});
    if (std::exchange(consumes_, false)) {
        advance();
    }
    for (;;) {
        if (!damages_.empty()) {
            event_.kind = EventKind::damage;
            told_ = damages_.back();
            event_.damage = &told_;
            event_.place = told_.place;
            event_.depth = nesting_.depth();
            damages_.pop_back();
            return true;
        }
        if (token().continues && continuing_) {
            return scalar();
        }
        continuing_ = false;
        if (ends_ > 0) {
            --ends_;
            return end(true);
        }
        if (std::exchange(reopens_, false)) {
            return startAgain();
        }
        if (held_) {
            head_ = *std::exchange(held_, std::nullopt);
            if (start()) {
                return true;
            }
        } else if (token().continues) {
            advance(); // of a skipped text
        } else if ((this->*stepFor(row(), token().kind))()) {
            return true;
        } else if (finished_) {
            return false;
        }
    }
}

// Advances to the next token and reports its damages.
void Reader::advance() {
    for (;;) {
        const Token& token = lexer_.next();
        if (token.kind != TokenKind::controls) {
            break;
        }
        if (std::exchange(controlsLine_, token.place.line) != token.place.line && damages_.size() < mostWaiting) {
            report(DamageKind::controlBytes, token.place);
        }
    }
    if (token().isUnclosed) {
        report(DamageKind::unclosedText, token().place);
    }
    if (token().hasNul) {
        report(DamageKind::nulInText, token().place);
    }
}

void Reader::report(DamageKind kind, const Place& place) {
    damages_.insert(damages_.begin(), Damage{kind, place, {}, 0});
}

// Reports an incomplete part, except at the end of the file, which is reported as `truncated`.
void Reader::reportUnlessCut(DamageKind kind, const Place& place) {
    if (token().kind != TokenKind::end) {
        report(kind, place);
    }
}

} // namespace notation
