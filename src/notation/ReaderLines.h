#pragma once

#include "notation/LineParser.h"
#include "notation/Reader.h"

/// The steps over lines that reading and skimming share, inline.
namespace notation {

static_assert(InputWindow::readable >= 2 * runs::stride);

inline constexpr std::ptrdiff_t usualLine = 4096; // with the blank lines after it

inline const char* endOfEnds(const char* at) {
    while (*at == ')') {
        ++at;
    }
    return at;
}

/// Passes blanks and the end of the line; null if there is something else.
inline const char* endOfLine(const char* at) {
    if (*at != '\n') {
        at = runs::endOfBlanks(at);
        at += *at == '\r' ? 1 : 0;
    }
    return *at == '\n' ? at + 1 : nullptr;
}

/// Whether the byte can begin a line: the first token of one that is read whole, or a text.
inline bool beginsLine(char byte) {
    return LineParser::isLetter(byte) || byte == '(' || byte == ')' || byte == '"' || byte == '|';
}

/// Passes blank lines from `line.begin` on, and finds the token that begins the next line; returns false if it is none
/// that can. After a head a text or reference would belong to it.
inline bool findToken(LineStart& line, bool isAfterHead) {
    const char* at = runs::endOfBlanks(line.begin);
    while (*at == '\n' || (at[0] == '\r' && at[1] == '\n')) {
        line.begin = at + (*at == '\r' ? 2 : 1);
        ++line.number;
        at = runs::endOfBlanks(line.begin);
    }
    line.token = at;
    return beginsLine(*at) && !(isAfterHead && (*at == '"' || *at == '|'));
}

/// The columns of blanks before the token: usually tabs, then spaces.
inline std::uint32_t indentOf(const LineStart& line) {
    std::uint32_t indent = line.indent;
    const char* blank = line.begin;
    if (indent == 0) {
        const auto tabs = std::countr_one(runs::bitsOf(runs::load(blank) == '\t'));
        blank += tabs;
        indent = Lexer::tabWidth * static_cast<std::uint32_t>(tabs);
    }
    for (; blank != line.token; ++blank) {
        indent += *blank == '\t' ? Lexer::tabWidth - indent % Lexer::tabWidth : 1;
    }
    return indent;
}

// Finds the token after a line that ends at `end`; returns false if none begins a line of its own.
inline bool Reader::findAfter(const char* end, bool isAfterHead, const LineStart& line, LineStart& after) const {
    after.end = end;
    after.endNumber = line.number;
    after.endOffset = line.offset;
    after.barLine = line.barLine;
    after.begin = endOfLine(end);
    after.number = line.number + 1;
    if (after.begin == nullptr || !findToken(after, isAfterHead)) {
        return false;
    }
    after.offset = window_.offsetOf(after.begin);
    return true;
}

inline Place Reader::placeOf(const char* at, const LineStart& line) const {
    const std::uint64_t offset = window_.offsetOf(at);
    return {offset, line.number, offset - line.offset + 1};
}

inline void Reader::push(Construct construct, const Place& place, const LineStart& line) {
    nesting_.push({place, indentOf(line), construct});
    straying_ = false;
}

inline bool Reader::isInMemory(const LineStart& line) const {
    return window_.limit() - line.begin >= usualLine || isAtEnd_;
}

// Whether the next token is the first on its line, within a construct of which lines are read. That line is in memory
// then, if it is not very long.
inline bool Reader::hasLine() {
    if (!inLines_) {
        return findLine();
    }
    if (!isInMemory(nextLine_)) {
        const char* const kept = nextLine_.end;
        const std::ptrdiff_t begin = nextLine_.begin - kept;
        const std::ptrdiff_t token = nextLine_.token - kept;
        isAtEnd_ = !window_.refill(kept) && !window_.isFull(window_.begin());
        nextLine_.end = window_.begin();
        nextLine_.begin = nextLine_.end + begin;
        nextLine_.token = nextLine_.end + token;
    }
    return !nesting_.isEmpty() && nesting_.innermost().construct <= Construct::list;
}

} // namespace notation
