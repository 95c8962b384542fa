#pragma once

#include "notation/InputWindow.h"
#include "notation/Line.h"
#include "notation/Token.h"

namespace notation {

/// Splits the input into tokens. Memory is limited by the window; time is proportional to the number of bytes.
///
/// Lines end with LF or CR LF, or with CR in a file whose first line ends with a CR alone. Any other CR is a blank
/// outside of texts and an ordinary byte within. A text ends with its line, closed or not.
class Lexer {
public:
    static constexpr std::uint32_t tabWidth = 8; ///< columns of indentation

    /// `window` must live as long. Only the lexer may refill it.
    explicit Lexer(InputWindow& window);

    /// Advances to the next token and returns it; at the end of the input its kind is `end`. Throws what the source of
    /// the bytes throws.
    const Token& next();
    [[nodiscard]] const Token& token() const { return token_; }

    /// Where the lexer is after a token.
    struct Cursor {
        const char* at;          ///< in the window, after the token
        std::uint64_t line;      ///< of the token
        std::uint64_t lineStart; ///< the offset of that line
        std::uint64_t barLine;   ///< the last line with a "|" text; 0 for none
        std::uint32_t indent;    ///< of the line, as in `Token`
    };
    /// Whether lines are known to end with LF, or CR LF, and no further piece of the current token follows.
    [[nodiscard]] bool isAfterToken() const { return !isPiece_ && lineEnds_ == LineEnds::lf; }
    /// PRECONDITION: `isAfterToken`, and `next` has been called.
    [[nodiscard]] Cursor cursor() const { return {at_, line_, lineStart_, barLine_, indent_}; }
    /// Goes on after another token, which the caller has read; `token` remains what it was.
    void moveTo(const Cursor& cursor) {
        at_ = cursor.at;
        line_ = cursor.line;
        lineStart_ = cursor.lineStart;
        barLine_ = cursor.barLine;
        indent_ = cursor.indent;
    }
    /// Whether the next token, or the current one if that has not been taken, is the first on a line, and lines end
    /// with LF; sets `line` then.
    bool findLine(bool isTokenTaken, LineStart& line) const;
    /// Goes on at the end of the line before `line`.
    void goOn(const LineStart& line);

private:
    enum class LineEnds { unknown, lf, cr };

    void skipToToken();
    void skipBlanks();
    void skipComment();
    bool atComment();
    void endLine();
    bool more();
    bool atLineEnd();
    [[nodiscard]] Place placeOf(const char* at) const;

    void beginToken(TokenKind kind);
    void beginText(TokenKind kind);
    void continueToken();
    void takeSingle(TokenKind kind);
    void endToken(const char* textEnd, const char* tokenEnd);
    void endPiece(const char* textEnd);
    bool passNul();
    void readText();
    bool passEscape();
    void endUnclosedText(bool lineEnds);
    void readLine();
    void endLineText();
    void readWord();
    void readControls();

    InputWindow& window_;
    const char* textBegin_; // all before it has been processed
    const char* at_;        // the next byte to look at
    Token token_;
    LineEnds lineEnds_ = LineEnds::unknown;
    bool isPiece_ = false; // the next token continues the current one
    bool sawNul_ = false;  // in the text of the current token
    bool lineIsNew_ = true;
    std::uint64_t line_ = 1;
    std::uint64_t lineStart_ = 0; // its offset
    std::uint64_t barLine_ = 0;   // the last line with a "|" text; 0 for none
    std::uint32_t blanks_ = 0;    // columns of the blanks on this line so far
    std::uint32_t indent_ = 0;    // of the line of the current token
};

} // namespace notation
