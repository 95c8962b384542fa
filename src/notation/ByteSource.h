#pragma once

#include <cstddef>
#include <string_view>

namespace notation {

/// Where the bytes of a file come from, in order and once.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /// Puts up to `size` of the next bytes, at least one, at `target`; returns how many. 0 at the end, and from then
    /// on. Throws `std::system_error` when the bytes cannot be read.
    virtual std::size_t read(char* target, std::size_t size) = 0;
};

/// Bytes in memory, which the caller keeps.
class MemorySource final : public ByteSource {
public:
    /// Hands over at most `most` bytes at a time.
    explicit MemorySource(std::string_view bytes, std::size_t most = std::string_view::npos)
        : bytes_(bytes), most_(most) {}
    std::size_t read(char* target, std::size_t size) override;

private:
    std::string_view bytes_; // those not read yet
    std::size_t most_;
};

/// What an open file descriptor gives from where it stands: a file of any size, a pipe, a terminal. The caller keeps
/// the descriptor and closes it.
class DescriptorSource final : public ByteSource {
public:
    explicit DescriptorSource(int descriptor) : descriptor_(descriptor) {}
    std::size_t read(char* target, std::size_t size) override;

private:
    int descriptor_;
};

} // namespace notation
