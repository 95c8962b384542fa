#pragma once

#include <cstddef>
#include <string_view>

namespace notation {

/// A source of the bytes of a file, which can be read once and in order. Used by one thread at a time.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /// Copies the next bytes, at least one and at most `size`, to `target`, and returns how many; at the end, and in
    /// all later calls, returns 0. Throws `std::system_error` when the bytes cannot be read.
    virtual std::size_t read(char* target, std::size_t size) = 0;
};

/// Bytes in memory, which the caller keeps.
class MemorySource final : public ByteSource {
public:
    /// A call of `read` returns at most `most` bytes.
    explicit MemorySource(std::string_view bytes, std::size_t most = std::string_view::npos)
        : bytes_(bytes), most_(most) {}
    std::size_t read(char* target, std::size_t size) override;

private:
    std::string_view bytes_; // not read yet
    std::size_t most_;
};

/// The bytes of an open file descriptor from its current position on: a file of any size, a pipe, a terminal. The
/// caller keeps and closes the descriptor.
class DescriptorSource final : public ByteSource {
public:
    explicit DescriptorSource(int descriptor) : descriptor_(descriptor) {}
    std::size_t read(char* target, std::size_t size) override;

private:
    int descriptor_;
};

} // namespace notation
