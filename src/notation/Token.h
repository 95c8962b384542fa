#pragma once

#include "notation/Place.h"

#include <string_view>

namespace notation {

enum class TokenKind : std::uint8_t {
    open,
    close,
    comma,
    text,      ///< in quotes; `text` is the part between them
    line,      ///< after a "|"; `text` is the rest of the line
    integer,   ///< `text` is the number, unchanged
    real,      ///< likewise
    reference, ///< "@12"; `text` is the number
    word,
    controls, ///< a run of control bytes without a meaning
    end,
};

/// One token, or a piece of one: a token that does not fit into the buffer comes in several.
struct Token {
    TokenKind kind = TokenKind::end;
    bool continues = false;   ///< it continues the text of the previous token
    bool startsLine = false;  ///< a "|" line; one that `continues` is a further line of the same text
    bool isFirst = false;     ///< only blanks are before it on its line
    bool isUnclosed = false;  ///< a quoted text without a closing quote
    bool hasNul = false;      ///< the first NUL of a text is in this piece
    std::uint32_t indent = 0; ///< of its line: the leading blanks, a tab as eight
    std::string_view text;    ///< unchanged bytes, with escapes; valid until the next token
    Place place;              ///< of its first byte
    std::uint64_t end = 0;    ///< the offset after its last byte
};

} // namespace notation
