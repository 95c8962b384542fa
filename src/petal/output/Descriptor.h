#pragma once

#include "text/Output.h"

#include <string_view>
#include <unistd.h>
#include <utility>

namespace petal {

/// Owns an open file descriptor, or none: -1.
class Descriptor {
public:
    explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] int get() const { return descriptor_; }
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    /// Gives the descriptor to the caller, who closes it.
    [[nodiscard]] int release() { return std::exchange(descriptor_, -1); }
    void close() {
        if (isOpen()) {
            ::close(std::exchange(descriptor_, -1));
        }
    }

private:
    int descriptor_;
};

/// The open file descriptor that a path such as "/dev/stdout" or "/dev/fd/3" names; -1 for other paths. It stays the
/// caller's.
///
/// Opening such a path instead would open the descriptor's file a second time, at its beginning.
[[nodiscard]] int namedDescriptor(std::string_view path);

/// A duplicate of `descriptor`, which the caller closes. Throws `std::system_error`.
[[nodiscard]] int duplicate(int descriptor);

/// Writes all of `bytes` to a file descriptor, which may be non-blocking. Throws `std::system_error`.
void writeFully(int descriptor, std::string_view bytes);

/// Writes to a descriptor that its owner keeps open.
class DescriptorOutput final : public text::Output {
public:
    explicit DescriptorOutput(int descriptor) : descriptor_(descriptor) {}
    void write(std::string_view bytes) override { writeFully(descriptor_, bytes); }

private:
    int descriptor_;
};

/// Throws `std::system_error` with `errno`.
[[noreturn]] void throwErrno();

/// Writes a text for people to standard output. Throws a `Failure` with the outcome `outputFailed`.
void writeToStandardOutput(std::string_view text);

} // namespace petal
