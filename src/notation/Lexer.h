#pragma once

#include "notation/InputWindow.h"
#include "notation/Token.h"

namespace notation {

/// Cuts the input into tokens. Memory is bounded by the window, time by the number of bytes.
///
/// Lines end with LF or CR LF; with CR in a file whose first line ends with a CR alone. Any other CR is a blank outside
/// of texts and a byte like any other within. A text ends where its line ends, closed or not.
class Lexer {
public:
    /// `window` must live as long, and no one else may move it.
    explicit Lexer(InputWindow& window);

    /// Goes on to the next token and returns it; from the end of the input on it is of kind `end`. Throws what the
    /// source of the bytes throws.
    const Token& next();
    [[nodiscard]] const Token& token() const { return token_; }

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
    const char* textBegin_; // what stands in front of it is done with
    const char* at_;        // how far the input was looked at; between tokens, behind the last one
    Token token_;
    LineEnds lineEnds_ = LineEnds::unknown;
    bool isPiece_ = false; // the current token goes on in the next
    bool sawNul_ = false;  // in the text of the current token
    bool lineIsNew_ = true;
    std::uint64_t line_ = 1;
    std::uint64_t lineStart_ = 0; // its offset
    std::uint64_t barLine_ = 0;   // the last line with a "|" text; 0 for none
    std::uint32_t blanks_ = 0;    // columns of the blanks on this line, those in front of its first token at first
    std::uint32_t indent_ = 0;    // of the line of the current token
};

} // namespace notation
