#include "notation/Reader.h"

#include <algorithm>
#include <utility>

namespace notation {

namespace {

struct ConstructWord {
    std::string_view word;
    Construct construct;
};

constexpr std::array constructWords{
    ConstructWord{"object", Construct::object},
    ConstructWord{"list", Construct::list},
    ConstructWord{"value", Construct::value},
};

bool isNumber(TokenKind kind) {
    return kind == TokenKind::integer || kind == TokenKind::real;
}

} // namespace

// Reads a location, or the head of a construct into `head_` and `kind_`, from "(" on.
bool Reader::openConstruct() {
    straying_ = false;
    head_ = {Construct::group, token().place, token().indent, token().isFirst, token().end};
    advance();
    if (isNumber(token().kind)) {
        return location();
    }
    takeHead();
    return start();
}

// A "(" where a property's name is expected.
bool Reader::openUnnamed() {
    head_ = {Construct::group, token().place, token().indent, token().isFirst, token().end};
    advance();
    if (isNumber(token().kind)) {
        report(DamageKind::unnamedValue, head_.place);
        return location();
    }
    takeHead();
    if (head_.construct != Construct::object) {
        report(DamageKind::unnamedValue, head_.place);
        return start();
    }
    held_ = head_;
    repair(nesting_.forObject(head_.isFirst ? head_.indent : Nesting::noIndent), head_.place);
    return false;
}

// Takes the word that names the construct, and the one that names its kind.
void Reader::takeHead() {
    kind_.clear();
    if (token().kind != TokenKind::word) {
        return;
    }
    takeWord(kind_);
    head_.end = wordEnd_;
    const auto* found = std::ranges::find(constructWords, kind_, &ConstructWord::word);
    if (found == constructWords.end()) {
        return reportUnlessCut(DamageKind::unknownConstruct, head_.place);
    }
    head_.construct = found->construct;
    kind_.clear();
    if (token().kind == TokenKind::word && token().place.line == head_.place.line) {
        takeWord(kind_);
        head_.end = wordEnd_;
    } else if (head_.construct == Construct::object) {
        reportUnlessCut(DamageKind::objectWithoutKind, head_.place);
    }
}

// Takes the word at the current token, which may come in pieces, and advances after it.
void Reader::takeWord(std::string& word) {
    word.clear();
    do {
        word.append(token().text.substr(0, settings_.longestName - std::min(word.size(), settings_.longestName)));
        wordEnd_ = token().end;
        advance();
    } while (token().continues);
}

bool Reader::start() {
    if (nesting_.depth() >= settings_.deepest) {
        skipConstruct();
        return false;
    }
    nameCount_ = 0;
    reference_.clear();
    if (head_.construct == Construct::object) {
        takeNames();
    }
    event_.kind = EventKind::start;
    event_.construct = head_.construct;
    event_.depth = nesting_.depth();
    event_.text = kind_;
    event_.names = {names_.data(), nameCount_};
    event_.reference = reference_;
    event_.place = head_.place;
    event_.end = head_.end;
    giveKey();
    nesting_.push({head_.place, head_.indent, head_.construct});
    return true;
}

void Reader::takeNames() {
    for (; token().kind == TokenKind::text || token().kind == TokenKind::line || token().kind == TokenKind::reference;
         advance()) {
        if (token().kind == TokenKind::reference) {
            reference_ = token().text;
        } else if (token().continues || nameCount_ < mostNames) {
            addToName(token());
        } else {
            break;
        }
        head_.end = token().end;
    }
    for (std::size_t index = 0; index < nameCount_; ++index) {
        names_[index].text = nameTexts_[index];
    }
}

void Reader::addToName(const Token& piece) {
    if (!piece.continues) {
        nameTexts_[nameCount_].clear();
        names_[nameCount_] = {{}, 0, piece.kind == TokenKind::text, piece.place.offset + 1};
        ++nameCount_;
    }
    std::string& text = nameTexts_[nameCount_ - 1];
    const auto add = [&](std::string_view bytes) {
        names_[nameCount_ - 1].length += bytes.size();
        text.append(bytes.substr(0, settings_.longestName - text.size()));
    };
    if (piece.continues && piece.startsLine) {
        add("\n");
    }
    add(piece.text);
}

// Opens the list or object again that a surplus parenthesis closed.
bool Reader::startAgain() {
    const Construct construct = isKeyed_ ? Construct::object : Construct::list;
    const Place place = isKeyed_ ? keyPlace_ : held_->place;
    event_.kind = EventKind::start;
    event_.construct = construct;
    event_.isImplied = true;
    event_.depth = nesting_.depth();
    event_.place = place;
    event_.end = place.offset;
    nesting_.push({place, nesting_.innermost().indent, construct});
    return true;
}

// Skips a construct that is nested too deep.
void Reader::skipConstruct() {
    if (!std::exchange(tooDeepTold_, true)) {
        report(DamageKind::tooDeep, head_.place);
    }
    isKeyed_ = false;
    for (std::uint64_t depth = 1; depth > 0 && token().kind != TokenKind::end; lexer_.next()) {
        depth += token().kind == TokenKind::open ? 1 : 0;
        depth -= token().kind == TokenKind::close ? 1 : 0;
    }
}

bool Reader::close() {
    end(false);
    event_.end = token().end;
    consumes_ = true;
    return true;
}

bool Reader::end(bool isImplied) {
    event_.kind = EventKind::end;
    event_.construct = nesting_.innermost().construct;
    event_.isImplied = isImplied;
    event_.place = nesting_.innermost().place;
    event_.end = held_ ? held_->place.offset : isKeyed_ ? keyPlace_.offset : token().place.offset;
    nesting_.pop();
    event_.depth = nesting_.depth();
    return true;
}

// Schedules the ends and the opening of constructs before the part at `place`, and reports the damage.
void Reader::repair(const Nesting::Repair& repair, const Place& place) {
    ends_ = repair.ends;
    reopens_ = repair.reopens;
    reportOpen(repair.ends > 0 ? DamageKind::missingClose : DamageKind::surplusClose, place, repair.ends);
}

void Reader::reportOpen(DamageKind kind, const Place& place, std::size_t count) {
    report(kind, place);
    damages_.front().opened = nesting_.innermost().place;
    damages_.front().count = count;
}

bool Reader::surplusClose() {
    if (!std::exchange(straying_, true)) {
        report(DamageKind::surplusClose, token().place);
    }
    advance();
    return false;
}

bool Reader::truncated() {
    reportOpen(DamageKind::truncated, token().place, nesting_.depth());
    ends_ = nesting_.depth();
    return false;
}

bool Reader::finish() {
    finished_ = true;
    return false;
}

} // namespace notation
