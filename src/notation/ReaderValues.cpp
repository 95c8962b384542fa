#include "notation/Reader.h"

#include <algorithm>
#include <utility>

namespace notation {

namespace {

// In the order of `TokenKind`; only the kinds of values are looked up.
constexpr std::array eventKinds{
    EventKind::damage,  EventKind::damage, EventKind::damage,    EventKind::text, EventKind::line,
    EventKind::integer, EventKind::real,   EventKind::reference, EventKind::word,
};

bool isFlag(std::string_view word) {
    return word == "TRUE" || word == "FALSE";
}

bool isScalar(TokenKind kind) {
    return kind >= TokenKind::text && kind <= TokenKind::reference;
}

} // namespace

// The name of a property.
bool Reader::key() {
    keyPlace_ = token().place;
    keyIndent_ = token().isFirst ? token().indent : Nesting::noIndent;
    takeWord(key_);
    isKeyed_ = true;
    return false;
}

// Moves the key to the event in which its value begins.
void Reader::giveKey() {
    if (std::exchange(isKeyed_, false)) {
        event_.key = key_;
        event_.keyPlace = keyPlace_;
    }
}

bool Reader::makeValue(EventKind kind) {
    event_.kind = kind;
    event_.continues = token().continues;
    event_.startsLine = token().startsLine;
    event_.depth = nesting_.depth();
    event_.text = token().text;
    event_.place = token().place;
    event_.end = token().end;
    giveKey();
    continuing_ = true;
    consumes_ = true;
    return true;
}

bool Reader::scalar() {
    return makeValue(eventKinds[static_cast<std::size_t>(token().kind)]);
}

bool Reader::unnamedScalar() {
    report(DamageKind::unnamedValue, token().place);
    return scalar();
}

// A word after the name of a property: its value, or the name of the next property.
bool Reader::wordValue() {
    if (token().place.line != keyPlace_.line) {
        return noValue();
    }
    return wordInGroup();
}

bool Reader::wordInGroup() {
    return makeValue(isFlag(token().text) ? EventKind::flag : EventKind::word);
}

// A word among values. If a value follows, the word is the name of a property, and the list ended before it.
bool Reader::wordInList() {
    if (isFlag(token().text)) {
        return makeValue(EventKind::flag);
    }
    key();
    const bool onLine = token().place.line == keyPlace_.line;
    const bool hasValue =
        token().kind == TokenKind::line || (onLine && (isScalar(token().kind) || token().kind == TokenKind::open ||
                                                       (token().kind == TokenKind::word && isFlag(token().text))));
    const Nesting::Repair found = hasValue ? nesting_.forProperty(keyIndent_) : Nesting::Repair{};
    if (found.ends > 0 || found.reopens) {
        repair(found, keyPlace_);
        return false;
    }
    isKeyed_ = false;
    event_.kind = EventKind::word;
    event_.depth = nesting_.depth();
    event_.text = key_;
    event_.place = keyPlace_;
    event_.end = wordEnd_;
    return true;
}

bool Reader::noValue() {
    reportUnlessCut(DamageKind::noValue, keyPlace_);
    event_.kind = EventKind::nothing;
    event_.depth = nesting_.depth();
    event_.place = keyPlace_;
    event_.end = wordEnd_;
    giveKey();
    return true;
}

// From a number after "(" on.
bool Reader::location() {
    const auto takeNumber = [this](std::string& number) {
        number.clear();
        const bool isNumber = token().kind == TokenKind::integer || token().kind == TokenKind::real;
        if (isNumber) {
            takeWord(number);
        }
        return isNumber;
    };
    takeNumber(x_);
    bool isWhole = token().kind == TokenKind::comma;
    if (isWhole) {
        advance();
    }
    isWhole = takeNumber(y_) && isWhole && token().kind == TokenKind::close;
    while (token().kind == TokenKind::comma || token().kind == TokenKind::integer || token().kind == TokenKind::real) {
        advance();
    }
    event_.kind = EventKind::location;
    event_.depth = nesting_.depth();
    event_.text = x_;
    event_.y = y_;
    event_.place = head_.place;
    event_.end = wordEnd_;
    if (token().kind == TokenKind::close) {
        event_.end = token().end;
        consumes_ = true;
    }
    if (!isWhole) {
        reportUnlessCut(DamageKind::badLocation, head_.place);
    }
    giveKey();
    return true;
}

bool Reader::strayComma() {
    report(DamageKind::strayComma, token().place);
    advance();
    return false;
}

bool Reader::strayText() {
    if (!std::exchange(straying_, true)) {
        report(DamageKind::strayText, token().place);
    }
    advance();
    return false;
}

} // namespace notation
