#pragma once

#include "notation/ByteSource.h"

#include <cstdint>
#include <memory>

namespace notation {

/// The part of the input that is in memory: a buffer of fixed size that moves over it, followed by a NUL.
class InputWindow {
public:
    static constexpr std::size_t usualCapacity = std::size_t{256} * 1024;

    /// Reads nothing yet. `source` must live as long.
    explicit InputWindow(ByteSource& source, std::size_t capacity = usualCapacity)
        : source_(source), capacity_(capacity), buffer_(std::make_unique_for_overwrite<char[]>(capacity + 1)),
          limit_(buffer_.get()) {
        *limit_ = '\0';
    }

    /// The first buffered byte.
    [[nodiscard]] const char* begin() const { return buffer_.get(); }
    /// Behind the last buffered byte; a NUL stands there.
    [[nodiscard]] const char* limit() const { return limit_; }
    /// How many bytes of the input stand in front of `place`, which lies within the buffered text.
    [[nodiscard]] std::uint64_t offsetOf(const char* place) const {
        return origin_ + static_cast<std::uint64_t>(place - buffer_.get());
    }

    /// Drops what stands in front of `keep`, moves the rest to the front, where it begins at `begin`, and reads on
    /// behind it. False when there is no more input, or when the kept text fills the buffer (`isFull`). Throws what
    /// the source throws; then the text is moved but as it was.
    bool refill(const char* keep);
    /// Whether `keep` and all behind it leave no room for more.
    [[nodiscard]] bool isFull(const char* keep) const { return static_cast<std::size_t>(limit_ - keep) == capacity_; }

private:
    ByteSource& source_;
    std::size_t capacity_;
    std::unique_ptr<char[]> buffer_;
    char* limit_;
    std::uint64_t origin_ = 0; // the offset of the first buffered byte
};

} // namespace notation
