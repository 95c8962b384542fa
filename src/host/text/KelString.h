#pragma once

#include "host/KelApi.h"

#include <cstdint>
#include <string_view>

/// A byte string of the repository: any bytes in any encoding, always followed by a NUL that is not counted.
///
/// Owns its buffer; copying copies the bytes. An empty string owns nothing and points to `emptyPtr`, so
/// default construction never allocates and never throws. Lengths are bytes. Comparison is byte for byte.
/// The buffer returned by `text()` and the view live until the string is next changed or destroyed.
/// Operations that allocate throw `std::bad_alloc` (or `std::length_error` above 2,147,483,646 bytes) and then
/// leave the string as it was.
class KEL_API KelString {
public:
    /// The buffer that all empty strings share: a single NUL. Never written to.
    static char emptyPtr[1];

    constexpr KelString() noexcept : text_(emptyPtr) {}
    /// The whole NUL-terminated `text`; null gives the empty string.
    KelString(const char* text) : KelString(text, -1) {}
    /// As `init`.
    KelString(const char* text, int length) : KelString() { init(text, length); }
    explicit KelString(std::string_view text);
    KelString(const KelString& other);
    KelString(KelString&& other) noexcept;
    KelString& operator=(const KelString& other);
    KelString& operator=(KelString&& other) noexcept;
    ~KelString();

    /// Becomes `length` bytes of `text` (which may hold NULs), or the whole NUL-terminated text when `length` is
    /// -1. A null text gives the empty string. `text` may point into this string.
    void init(const char* text, int length);
    void init(std::string_view text);
    /// Makes the string empty and releases its buffer.
    void empty() noexcept;

    /// At most `count` bytes from the byte at `start`; empty when `start` is at or past the end.
    [[nodiscard]] KelString mid(unsigned int start, unsigned int count) const;
    /// Appends each of the C strings in turn; a null pointer ends the list and must be there.
    KelString& add(const char* first, ...) __attribute__((sentinel));
    /// Appends `text`, which may be a part of this string. Many appendings cost what the result is long.
    KelString& append(std::string_view text);
    /// Puts `text`, which may be a part of this string, in front. Many prependings cost what the result is long.
    KelString& prepend(std::string_view text);
    KelString& operator+=(const KelString& other) { return append(other.view()); }

    [[nodiscard]] const char* text() const noexcept { return text_; }
    [[nodiscard]] int length() const noexcept { return length_; }
    [[nodiscard]] bool isEmpty() const noexcept { return length_ == 0; }
    [[nodiscard]] std::string_view view() const noexcept {
        return {text_, static_cast<std::string_view::size_type>(length_)};
    }

private:
    void release() noexcept;

    /// Where the text stands in its buffer, and so on which side there may be room.
    enum class Place : std::uint16_t { nowhere, atStart, atEnd };

    [[nodiscard]] std::size_t room() const noexcept;
    /// A new buffer of 2^`exponent` bytes takes the place of the old one; the text's bytes are in it already.
    void take(char* text, std::size_t length, int exponent, Place place) noexcept;

    char* text_;                     // emptyPtr, or in a heap buffer of at least length_ + 1 bytes
    std::int32_t length_ = 0;        // bytes before the terminating NUL
    std::uint16_t roomExponent_ = 0; // 0: the buffer fits exactly; n: it holds 2^n bytes
    Place place_ = Place::nowhere;
};

[[nodiscard]] KEL_API KelString operator+(const KelString& left, const KelString& right);
[[nodiscard]] inline bool operator==(const KelString& left, const KelString& right) noexcept {
    return left.view() == right.view();
}
[[nodiscard]] inline bool operator==(const KelString& left, const char* right) noexcept {
    return left.view() == std::string_view(right);
}

/// An empty string, for arguments that are to say nothing.
KEL_API extern const KelString emptyString;
