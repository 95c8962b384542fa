#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace text {

/// A destination of bytes: a file, a pipe, a text in memory. Used by one thread at a time.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    /// Takes all of `bytes`, which need to live during the call only. Throws `std::system_error` on failure; the output
    /// then holds an unknown part of them and must not be written to again.
    virtual void write(std::string_view bytes) = 0;
};

/// Collects small pieces for an output, which it does not own and which must outlive it.
///
/// The destructor discards bytes that were not flushed: it could not report a failure. Every function throws what the
/// output throws. Holds 64 KiB.
class BufferedOutput {
public:
    explicit BufferedOutput(Output& output);

    void put(char byte) {
        if (length_ == capacity) {
            flush();
        }
        buffer_[length_++] = byte;
    }
    void put(std::string_view bytes) {
        if (bytes.size() > capacity - length_) {
            putMany(bytes);
            return;
        }
        std::copy(bytes.begin(), bytes.end(), buffer_.get() + length_);
        length_ += bytes.size();
    }
    /// Room for `most` bytes, which `putUntil` says the end of. At most `mostRoom`.
    [[nodiscard]] char* room(std::size_t most) {
        if (most > capacity - length_) {
            flush();
        }
        return buffer_.get() + length_;
    }
    void putUntil(const char* end) { length_ = static_cast<std::size_t>(end - buffer_.get()); }
    static constexpr std::size_t mostRoom = 1024;
    void putRepeated(char byte, std::size_t count);
    void flush();

private:
    void putMany(std::string_view bytes);

    static constexpr std::size_t capacity = std::size_t{64} * 1024;

    Output& output_;
    std::unique_ptr<char[]> buffer_;
    std::size_t length_ = 0;
};

} // namespace text
