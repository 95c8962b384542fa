#pragma once

#include "notation/ByteSource.h"

#include <cstdint>
#include <memory>

namespace notation {

/// The part of the input that is in memory: a buffer of fixed size that moves over the input, followed by a NUL.
/// Pointers into it are valid until `refill`. Some bytes after the NUL can be read, too; they mean nothing.
class InputWindow {
public:
    static constexpr std::size_t usualCapacity = std::size_t{256} * 1024;
    static constexpr std::size_t readable = 64; ///< from the NUL on

    /// `source` must live as long. Reads nothing yet.
    explicit InputWindow(ByteSource& source, std::size_t capacity = usualCapacity)
        : source_(source), capacity_(capacity), buffer_(std::make_unique_for_overwrite<char[]>(capacity + readable)),
          limit_(buffer_.get()) {
        *limit_ = '\0';
    }

    /// The first buffered byte.
    [[nodiscard]] const char* begin() const { return buffer_.get(); }
    /// The end of the buffered bytes; it points to a NUL.
    [[nodiscard]] const char* limit() const { return limit_; }
    /// The offset in the input of `place`, which must be within the buffered text.
    [[nodiscard]] std::uint64_t offsetOf(const char* place) const {
        return origin_ + static_cast<std::uint64_t>(place - buffer_.get());
    }

    /// Drops the bytes before `keep`, moves the others to `begin`, and appends more of the input. Returns false when
    /// there is no more input, or when the kept text fills the buffer (`isFull`). Throws what the source throws; the
    /// kept text has been moved then, but is complete.
    bool refill(const char* keep);
    /// Whether the bytes from `keep` on fill the buffer.
    [[nodiscard]] bool isFull(const char* keep) const { return static_cast<std::size_t>(limit_ - keep) == capacity_; }

private:
    ByteSource& source_;
    std::size_t capacity_;
    std::unique_ptr<char[]> buffer_;
    char* limit_;
    std::uint64_t origin_ = 0; // the offset of the first buffered byte
};

} // namespace notation
