#pragma once

#include <span>
#include <string>
#include <string_view>

namespace text {

/// The escapes of one target syntax: a row of data for `escaped`. Its texts must live as long as the program.
struct Escapes {
    struct Replacement {
        char character; ///< ASCII
        std::string_view by;
    };
    std::span<const Replacement> replacements;
    /// `printf` formats, with one number, for the unprintable characters without a replacement: ASCII, and others.
    const char* control;
    const char* unprintable;
    /// The same for each byte of an invalid sequence; null: U+FFFD takes the place of the whole sequence.
    const char* invalidByte;
};

/// `text` with these escapes. Valid UTF-8 if the escapes are.
[[nodiscard]] std::string escaped(std::string_view text, const Escapes& escapes);

/// False for characters that a terminal would act on instead of showing them: those that could move the cursor, start
/// an escape sequence or change the direction of writing.
[[nodiscard]] bool isPrintable(int character);

/// `text` in a form that is safe on a terminal: every character that is not printable is spelled out ("\n", "\x1b",
/// "\u{202e}"), and so is every byte that is not part of valid UTF-8 ("\xe9"). The result is valid UTF-8 of one line.
[[nodiscard]] std::string printableText(std::string_view text);

/// Bytes as a text for JSON: unchanged if they are UTF-8, otherwise as `printableText`, which keeps the names of
/// different files different.
[[nodiscard]] std::string validText(std::string_view bytes);

/// `text` as a JSON string in its quotes. Every character that is not printable is escaped, and each invalid sequence
/// becomes U+FFFD.
[[nodiscard]] std::string quotedJsonText(std::string_view text);

/// Appends `text` as a JSON string, as `quotedJsonText`.
void appendQuotedJson(std::string& to, std::string_view text);

/// Whether any JSON writer makes the same of `text` as `quotedJsonText`: it is valid UTF-8 and all that needs an escape
/// is quotes, backslashes and the controls before the blank.
[[nodiscard]] bool isSafeJsonText(std::string_view text);

} // namespace text
