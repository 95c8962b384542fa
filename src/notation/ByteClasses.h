#pragma once

#include <array>
#include <cstdint>

namespace notation {

/// The meaning of a byte at the start of a token.
enum class ByteClass : std::uint8_t {
    control, ///< no meaning; includes NUL, which also marks the end of the buffered text
    blank,
    lineEnd,
    open,
    close,
    comma,
    quote,
    bar,
    comment,
    word, ///< all others: letters, digits, signs, and every byte of a character beyond ASCII
};

/// The kinds of runs that a byte ends, as bits of `ByteTables::stops`.
enum RunStop : std::uint8_t {
    stopsQuoted = 1, ///< quote, backslash, line end, NUL
    stopsLine = 2,   ///< line end, NUL
    stopsWord = 4,   ///< all bytes that cannot be within a word
};

namespace detail {

struct ByteTables {
    std::array<ByteClass, 256> classes{};
    std::array<std::uint8_t, 256> stops{};
};

constexpr ByteTables makeByteTables() {
    struct Row {
        ByteClass byteClass;
        const char* bytes;
    };
    constexpr Row rows[] = {
        {ByteClass::blank, " \t\v\f"}, {ByteClass::lineEnd, "\n\r"}, {ByteClass::open, "("}, {ByteClass::close, ")"},
        {ByteClass::comma, ","},       {ByteClass::quote, "\""},     {ByteClass::bar, "|"},  {ByteClass::comment, "#;"},
    };
    ByteTables tables;
    for (unsigned byte = 0; byte < 256; ++byte) {
        tables.classes[byte] = byte < ' ' || byte == 0x7F ? ByteClass::control : ByteClass::word;
    }
    for (const Row& row : rows) {
        for (const char* byte = row.bytes; *byte != '\0'; ++byte) {
            tables.classes[static_cast<unsigned char>(*byte)] = row.byteClass;
        }
    }
    for (unsigned byte = 0; byte < 256; ++byte) {
        const ByteClass is = tables.classes[byte];
        const bool endsLine = is == ByteClass::lineEnd || byte == 0;
        const bool inWord = is >= ByteClass::bar;
        tables.stops[byte] = static_cast<std::uint8_t>((endsLine || byte == '"' || byte == '\\' ? stopsQuoted : 0) |
                                                       (endsLine ? stopsLine : 0) | (inWord ? 0 : stopsWord));
    }
    return tables;
}

inline constexpr ByteTables byteTables = makeByteTables();

} // namespace detail

constexpr ByteClass classOf(char byte) {
    return detail::byteTables.classes[static_cast<unsigned char>(byte)];
}

template <RunStop stop>
constexpr bool endsRun(char byte) {
    return (detail::byteTables.stops[static_cast<unsigned char>(byte)] & stop) != 0;
}

/// Returns the first byte at or after `text` that ends such a run. Requires one: NUL ends all of them.
template <RunStop stop>
const char* endOfRun(const char* text) {
    while (!endsRun<stop>(*text)) {
        ++text;
    }
    return text;
}

} // namespace notation
