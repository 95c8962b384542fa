#pragma once

#include "host/KelApi.h"

#include <cstdint>
#include <string_view>

/// A byte string of the repository: any bytes in any encoding, followed by a NUL that is not counted.
///
/// Owns its buffer; copying copies the bytes. An empty string has no buffer and points to `emptyPtr`, so that default
/// construction neither allocates nor throws. Lengths are in bytes, and comparison is byte for byte. The results of
/// `text()` and `view()` are valid until the string changes or is destroyed. Functions that allocate may throw
/// `std::bad_alloc`, or `std::length_error` above 2,147,483,646 bytes, and the string is unchanged then. As with
/// standard strings, several threads may read one that none changes. Costs are proportional to the bytes copied.
class KEL_API KelString {
public:
    /// The buffer that all empty strings share: a single NUL. It is never written.
    static char emptyPtr[1];

    constexpr KelString() noexcept : text_(emptyPtr) {}
    /// The whole of the NUL-terminated `text`; null gives the empty string.
    KelString(const char* text) : KelString(text, -1) {}
    /// As `init`.
    KelString(const char* text, int length) : KelString() { init(text, length); }
    explicit KelString(std::string_view text);
    KelString(const KelString& other);
    KelString(KelString&& other) noexcept;
    KelString& operator=(const KelString& other);
    KelString& operator=(KelString&& other) noexcept;
    ~KelString();

    /// Replaces the contents by `length` bytes of `text`, which may contain NULs, or by the whole NUL-terminated text
    /// when `length` is -1. A null text gives the empty string. `text` may point into this string.
    void init(const char* text, int length);
    void init(std::string_view text);
    /// Makes the string empty and releases its buffer.
    void empty() noexcept;

    /// At most `count` bytes from the byte at `start`; empty when `start` is at or past the end.
    [[nodiscard]] KelString mid(unsigned int start, unsigned int count) const;
    /// Appends C strings one by one. The last argument must be a null pointer. If it throws, some may have been
    /// appended.
    KelString& add(const char* first, ...) __attribute__((sentinel));
    /// Appends `text`, which may be a part of this string. Repeated appending costs time proportional to the result.
    KelString& append(std::string_view text);
    /// Inserts `text`, which may be a part of this string, at the start. Repeated prepending costs time proportional to
    /// the result.
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

    /// The position of the text in its buffer, which decides the side on which there is room.
    enum class Place : std::uint16_t { nowhere, atStart, atEnd };

    [[nodiscard]] std::size_t room() const noexcept;
    /// Replaces the buffer by one of 2^`exponent` bytes, which already contains the text.
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

/// The empty string, for arguments without a text.
KEL_API extern const KelString emptyString;
