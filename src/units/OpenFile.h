#pragma once

#include "notation/ByteSource.h"

#include <cstdint>
#include <filesystem>

namespace units {

/// A regular file that is open for reading, as long as it was then. Its operations throw `std::system_error`.
///
/// Nothing else is opened, and nothing is read that a file's size does not show, such as what a kernel makes up on
/// demand: the names come out of model files, and reading might never end.
class OpenFile final : public notation::ByteSource {
public:
    explicit OpenFile(const std::filesystem::path& path);
    ~OpenFile() override;

    std::size_t read(char* target, std::size_t size) override;
    /// Has `read` go on at that offset.
    void seek(std::uint64_t offset);

private:
    int descriptor_;
    std::uint64_t size_ = 0;
    std::uint64_t rest_ = 0; // of the size, behind what was read
};

} // namespace units
