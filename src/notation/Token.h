#pragma once

#include "notation/Place.h"

#include <string_view>

namespace notation {

enum class TokenKind : std::uint8_t {
    open,
    close,
    comma,
    text,      ///< in quotes; `text` is what stands between them
    line,      ///< behind a "|"; `text` is the rest of the line
    integer,   ///< `text` is the number as it stands
    real,      ///< likewise
    reference, ///< "@12"; `text` is the number
    word,
    controls, ///< a run of control bytes that mean nothing
    end,
};

/// One token, or a piece of one: a token that does not fit into the buffer comes in several.
struct Token {
    TokenKind kind = TokenKind::end;
    bool continues = false;   ///< goes on with the text of the token before
    bool startsLine = false;  ///< a "|" line; one that `continues` is a further line of the same text
    bool isFirst = false;     ///< nothing but blanks stands in front of it on its line
    bool isUnclosed = false;  ///< a quoted text that the end of its line ends
    bool hasNul = false;      ///< the first NUL of a text is in this piece
    std::uint32_t indent = 0; ///< of the line that it is on: blanks in front, a tab as eight
    std::string_view text;    ///< bytes as they stand, escapes included; good until the next token
    Place place;              ///< of its first byte
    std::uint64_t end = 0;    ///< the offset behind its last byte
};

} // namespace notation
