#include "notation/ByteClasses.h"
#include "notation/Lexer.h"
#include "notation/unclosedText.h"
#include "notation/wordKind.h"

namespace notation {

void Lexer::beginToken(TokenKind kind) {
    const bool isFirst = lineIsNew_;
    if (isFirst) {
        lineIsNew_ = false;
        indent_ = blanks_;
    }
    token_.kind = kind;
    token_.continues = false;
    token_.startsLine = false;
    token_.isFirst = isFirst;
    token_.isUnclosed = false;
    token_.hasNul = false;
    token_.indent = indent_;
    token_.place = placeOf(at_);
}

void Lexer::beginText(TokenKind kind) {
    beginToken(kind);
    textBegin_ = ++at_;
    sawNul_ = false;
}

void Lexer::continueToken() {
    isPiece_ = false;
    token_.continues = true;
    token_.startsLine = false;
    token_.isFirst = false;
    token_.hasNul = false;
    token_.place = placeOf(at_);
    textBegin_ = at_;
    switch (token_.kind) {
    case TokenKind::text:
        return readText();
    case TokenKind::line:
        return readLine();
    default:
        return readWord();
    }
}

void Lexer::takeSingle(TokenKind kind) {
    beginToken(kind);
    textBegin_ = at_;
    endToken(at_ + 1, at_ + 1);
}

void Lexer::endToken(const char* textEnd, const char* tokenEnd) {
    token_.text = {textBegin_, static_cast<std::size_t>(textEnd - textBegin_)};
    token_.end = window_.offsetOf(tokenEnd);
    at_ = tokenEnd;
}

void Lexer::endPiece(const char* textEnd) {
    endToken(textEnd, textEnd);
    isPiece_ = true;
}

// Skips a NUL within a text, or reads more input if the NUL marks the end of the buffered text. Returns false when
// neither is possible: the token, or a piece of it, ends here.
bool Lexer::passNul() {
    if (at_ == window_.limit()) {
        return more();
    }
    token_.hasNul = token_.hasNul || !sawNul_;
    sawNul_ = true;
    ++at_;
    return true;
}

void Lexer::readText() {
    for (;;) {
        at_ = endOfRun<stopsQuoted>(at_);
        switch (*at_) {
        case '"':
            return endToken(at_, at_ + 1);
        case '\\':
            if (!passEscape()) {
                return endPiece(at_);
            }
            break;
        case '\0':
            if (!passNul()) {
                return window_.isFull(textBegin_) ? endPiece(at_) : endUnclosedText(false);
            }
            break;
        default:
            if (atLineEnd()) {
                return endUnclosedText(true);
            }
            ++at_;
        }
    }
}

// Skips a backslash, and the quote or backslash that it escapes. Returns false when there is no room to read the next
// byte.
bool Lexer::passEscape() {
    const bool isLast = at_ + 1 == window_.limit() && !more();
    if (isLast && window_.isFull(textBegin_)) {
        return false;
    }
    at_ += at_[1] == '"' || at_[1] == '\\' ? 2 : 1;
    return true;
}

// A text that ends with the file is not reported as unclosed: the constructs around it are not closed either.
void Lexer::endUnclosedText(bool lineEnds) {
    const std::string_view rest(textBegin_, static_cast<std::size_t>(at_ - textBegin_));
    const TextEnd end = lineEnds ? endOfUnclosedText(rest) : TextEnd{rest.size(), rest.size(), true};
    token_.isUnclosed = !end.isClosed;
    endToken(textBegin_ + end.text, textBegin_ + end.token);
}

void Lexer::readLine() {
    for (;;) {
        at_ = endOfRun<stopsLine>(at_);
        if (*at_ != '\0') {
            if (atLineEnd()) {
                return endLineText();
            }
            ++at_;
        } else if (!passNul()) {
            const bool keepsCr = at_ - textBegin_ > 1 && at_[-1] == '\r'; // an LF may follow
            return window_.isFull(textBegin_) ? endPiece(at_ - (keepsCr ? 1 : 0)) : endToken(at_, at_);
        }
    }
}

void Lexer::endLineText() {
    const bool hasCr = *at_ == '\n' && at_ != textBegin_ && at_[-1] == '\r';
    endToken(at_ - (hasCr ? 1 : 0), at_);
}

void Lexer::readWord() {
    do {
        at_ = endOfRun<stopsWord>(at_);
    } while (at_ == window_.limit() && more());
    if (at_ == window_.limit() && window_.isFull(textBegin_)) {
        return endPiece(at_);
    }
    const auto length = static_cast<std::size_t>(at_ - textBegin_);
    token_.kind = token_.continues ? TokenKind::word : wordKind({textBegin_, length});
    textBegin_ += token_.kind == TokenKind::reference ? 1 : 0;
    endToken(at_, at_);
}

void Lexer::readControls() {
    beginToken(at_ == window_.limit() ? TokenKind::end : TokenKind::controls);
    do {
        while (at_ != window_.limit() && classOf(*at_) == ByteClass::control) {
            ++at_;
        }
        textBegin_ = at_;
    } while (at_ == window_.limit() && more());
    endToken(at_, at_);
}

} // namespace notation
