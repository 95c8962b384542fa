#include "notation/Lexer.h"

#include "notation/ByteClasses.h"
#include "notation/ByteRuns.h"

namespace notation {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

Lexer::Lexer(InputWindow& window) : window_(window), textBegin_(window.begin()), at_(textBegin_) {}

const Token& Lexer::next() {
    if (isPiece_) {
        continueToken();
        return token_;
    }
    skipToToken();
    switch (classOf(*at_)) {
    case ByteClass::open:
        takeSingle(TokenKind::open);
        break;
    case ByteClass::close:
        takeSingle(TokenKind::close);
        break;
    case ByteClass::comma:
        takeSingle(TokenKind::comma);
        break;
    case ByteClass::quote:
        beginText(TokenKind::text);
        readText();
        break;
    case ByteClass::bar:
        beginText(TokenKind::line);
        token_.startsLine = true;
        token_.continues = barLine_ != 0 && barLine_ + 1 == line_;
        barLine_ = line_;
        readLine();
        break;
    case ByteClass::control:
        readControls();
        break;
    default:
        beginToken(TokenKind::word);
        textBegin_ = at_;
        readWord();
        if (token_.place.offset == 0 && token_.text == byteOrderMark) {
            return next();
        }
    }
    return token_;
}

void Lexer::skipToToken() {
    for (;;) {
        skipBlanks();
        switch (classOf(*at_)) {
        case ByteClass::blank:
            ++at_;
            ++blanks_;
            break;
        case ByteClass::lineEnd:
            textBegin_ = at_;
            if (atLineEnd()) {
                endLine();
            } else {
                ++at_;
            }
            break;
        case ByteClass::comment:
            skipComment();
            break;
        case ByteClass::control:
            textBegin_ = at_;
            if (at_ != window_.limit() || !more()) {
                return;
            }
            break;
        case ByteClass::word:
            if (*at_ != '/' || !atComment()) {
                return;
            }
            skipComment();
            break;
        default:
            return;
        }
    }
}

// Skips spaces and tabs, and counts their columns.
void Lexer::skipBlanks() {
    const char* at = at_;
    std::uint32_t columns = blanks_;
    for (;; ++at) {
        if (*at == ' ') {
            ++columns;
        } else if (*at == '\t') {
            columns += tabWidth - columns % tabWidth;
        } else {
            break;
        }
    }
    at_ = at;
    blanks_ = columns;
}

// Whether the "/" here is the first of two.
bool Lexer::atComment() {
    textBegin_ = at_;
    return (at_ + 1 != window_.limit() || more()) && at_[1] == '/';
}

void Lexer::skipComment() {
    for (;;) {
        at_ = endOfRun<stopsLine>(at_);
        textBegin_ = at_;
        if (at_ == window_.limit()) {
            if (!more()) {
                return;
            }
        } else if (*at_ != '\0' && atLineEnd()) {
            return;
        } else {
            ++at_;
        }
    }
}

void Lexer::endLine() {
    ++at_;
    ++line_;
    lineStart_ = window_.offsetOf(at_);
    lineIsNew_ = true;
    blanks_ = 0;
}

// Appends input to the buffered text; returns false when there is no more input or room.
bool Lexer::more() {
    const auto done = at_ - textBegin_;
    const bool has = window_.refill(textBegin_);
    textBegin_ = window_.begin();
    at_ = textBegin_ + done;
    return has;
}

// Whether the LF or CR here ends the line. The first of them decides the meaning of a CR.
bool Lexer::atLineEnd() {
    if (*at_ == '\n') {
        lineEnds_ = lineEnds_ == LineEnds::unknown ? LineEnds::lf : lineEnds_;
        return true;
    }
    if (lineEnds_ == LineEnds::unknown) {
        const bool followed = at_ + 1 != window_.limit() || more();
        lineEnds_ = followed && at_[1] == '\n' ? LineEnds::lf : LineEnds::cr;
    }
    return lineEnds_ == LineEnds::cr;
}

bool Lexer::findLine(bool isTokenTaken, LineStart& line) const {
    line.barLine = 0;
    if (!isAfterToken()) {
        return false;
    }
    if (isTokenTaken) {
        const char* const lineEnd = at_ + (*at_ == '\r' ? 1 : 0);
        if (*lineEnd != '\n') {
            return false;
        }
        line.begin = lineEnd + 1;
        line.token = runs::endOfBlanks(line.begin);
        line.number = line_ + 1;
        line.offset = window_.offsetOf(line.begin);
        line.indent = 0;
        return true;
    }
    line.begin = line.token = window_.begin() + (token_.place.offset - window_.offsetOf(window_.begin()));
    line.number = line_;
    line.offset = lineStart_;
    line.indent = token_.indent;
    return token_.isFirst;
}

void Lexer::goOn(const LineStart& line) {
    textBegin_ = at_ = line.end;
    line_ = line.endNumber;
    lineStart_ = line.endOffset;
    barLine_ = line.barLine != 0 ? line.barLine : barLine_;
    lineIsNew_ = false;
}

Place Lexer::placeOf(const char* at) const {
    const std::uint64_t offset = window_.offsetOf(at);
    return {offset, line_, offset - lineStart_ + 1};
}

} // namespace notation
