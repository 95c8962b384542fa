#pragma once

#include "notation/ByteSource.h"

#include <cstdint>
#include <filesystem>

namespace units {

/// A regular file, open for reading up to the size that it had when it was opened. Owns its descriptor. All operations
/// throw `std::system_error`.
///
/// Other kinds of files are refused, and so are bytes beyond the size, such as those of files in /proc: the names come
/// from model files, and reading a device or a pipe might never end.
class OpenFile final : public notation::ByteSource {
public:
    explicit OpenFile(const std::filesystem::path& path);
    ~OpenFile() override;

    std::size_t read(char* target, std::size_t size) override;
    /// Sets the offset of the next `read`.
    void seek(std::uint64_t offset);

private:
    int descriptor_;
    std::uint64_t size_ = 0;
    std::uint64_t rest_ = 0; // bytes after those that were read
};

} // namespace units
