#pragma once

#include "host/KelApi.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

/// A byte string of the repository: any bytes in any encoding, followed by a NUL that is not counted.
///
/// Takes one pointer. A copy shares the buffer of its original until one of the two changes, so most copies cost
/// neither time nor memory. An empty string has no buffer and points to `emptyPtr`, so that default construction
/// neither allocates nor throws. Lengths are in bytes, and comparison is byte for byte. The results of `text()` and
/// `view()` are valid until the string changes or is destroyed. Functions that allocate may throw `std::bad_alloc`, or
/// `std::length_error` above 2,147,483,646 bytes, and the string is unchanged then. As with standard strings, several
/// threads may read one that none changes; each may change its own copies. Costs are proportional to the bytes copied.
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
    KelString(KelString&& other) noexcept : text_(std::exchange(other.text_, emptyPtr)) {}
    KelString& operator=(const KelString& other);
    KelString& operator=(KelString&& other) noexcept {
        if (this != &other) {
            take(std::exchange(other.text_, emptyPtr));
        }
        return *this;
    }
    ~KelString() { release(); }

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
    [[nodiscard]] int length() const noexcept { return static_cast<int>(size()); }
    [[nodiscard]] bool isEmpty() const noexcept { return text_ == emptyPtr; }
    [[nodiscard]] std::string_view view() const noexcept { return {text_, size()}; }

private:
    /// What a buffer has directly before the text.
    struct Head {
        std::uint32_t length; // bytes before the terminating NUL
        std::uint32_t use;    // of a buffer with room to grow: its size and its side; else the number of other owners
    };

    [[nodiscard]] std::size_t size() const noexcept {
        std::uint32_t length = 0;
        if (!isEmpty()) {
            std::memcpy(&length, text_ - sizeof(Head), sizeof length); // a text that grew at its start is not aligned
        }
        return length;
    }
    [[nodiscard]] std::uint32_t use() const noexcept;
    /// Gives up the buffer. The string must get another one, or end.
    void release() noexcept {
        if (!isEmpty()) {
            releaseBuffer();
        }
    }
    void releaseBuffer() noexcept;
    /// Replaces the text by another one, which is `emptyPtr` or has its head.
    void take(char* text) noexcept {
        release();
        text_ = text;
    }
    /// The text of a copy.
    [[nodiscard]] char* share() const;

    char* text_; // emptyPtr, or in a heap buffer
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
