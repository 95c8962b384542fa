#pragma once

#include "notation/ByteSource.h"

#include <cstdint>
#include <filesystem>

namespace units {

/// A file that is open for reading. All its operations throw `std::system_error`.
class OpenFile final : public notation::ByteSource {
public:
    explicit OpenFile(const std::filesystem::path& path);
    ~OpenFile() override;

    std::size_t read(char* target, std::size_t size) override;
    /// Has `read` go on at that offset.
    void seek(std::uint64_t offset) const;

private:
    int descriptor_;
};

} // namespace units
