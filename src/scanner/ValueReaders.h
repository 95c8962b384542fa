#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace rose {

/// A value read from the input: a NUL-terminated byte array of the file's raw bytes, or nothing.
///
/// Owns its array. `text()` stays valid until the value is destroyed, moved from or assigned to.
class Value {
public:
    /// No value.
    Value() = default;
    /// An empty value with room for `capacity` bytes.
    explicit Value(std::size_t capacity) : text_(new char[capacity + 1]) { text_[0] = 0; }
    /// A copy of `text`; throws `std::bad_alloc` as the other constructor does.
    explicit Value(std::string_view text) : Value(text.size()) { append(text); }

    /// The array, or null when there is no value.
    [[nodiscard]] char* text() const { return text_.get(); }
    [[nodiscard]] explicit operator bool() const { return text_ != nullptr; }

    /// Adds `text` at the end. PRECONDITION: the room given at construction suffices.
    void append(std::string_view text) {
        text.copy(text_.get() + length_, text.size());
        length_ += text.size();
        text_[length_] = 0;
    }

    /// Notes that the file's text has `length` more bytes, for which there was no room.
    void leaveOut(std::size_t length) { left_ += length; }
    /// The length of the file's text.
    [[nodiscard]] std::size_t getSize() const { return length_ + left_; }

private:
    std::unique_ptr<char[]> text_;
    std::size_t length_ = 0;
    std::size_t left_ = 0;
};

// The readers extract a value from `text`, the current match as a C string; a NUL in the match ends the text. They
// neither unescape nor convert. A result without a value means that the text has none.

/// The text after the last `delimiter`; no value without one.
Value getValue(const char* text, char delimiter);

/// The text after the last `delimiter`; without one, the text after the last "@" and then a tab, which marks the number
/// of a view; no value without either.
Value getValue3(const char* text, char delimiter);

/// The same as `getValue3`.
Value getValue4(const char* text, char delimiter);

/// The text between the third and the fourth `delimiter`, and in `viewNumber` the decimal number after the last "@" (as
/// `strtol` reads it). No value with fewer than four delimiters; `viewNumber` is not changed then, nor without an "@".
Value getValue5(const char* text, char delimiter, long* viewNumber);

/// How many bytes of a multi-line text are kept.
inline constexpr std::size_t longestMultiLine = 9999;

/// Reads a multi-line text from the input after the current match: a newline, then lines that begin with "|". The value
/// is their text without the "|", joined by newlines, cut after `longestMultiLine` bytes. The input then continues with
/// the newline that ends the last of them; the current match does not change. No value, and no change to the input,
/// when the next line does not begin with "|".
Value getMultiLine();

} // namespace rose
