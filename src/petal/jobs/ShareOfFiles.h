#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

namespace petal {

constexpr std::size_t mostFilesInShare = 32; // of one process

/// The files that one process imports: several if they are small, so that their bytes are at most a million.
class ShareOfFiles {
public:
    /// Whether the file goes into the share, too; into an empty one any does. One that cannot be read counts as large.
    bool take(const std::string& file, bool isEmpty) {
        std::error_code error;
        const std::uint64_t size = std::filesystem::file_size(file, error); // the largest number for what is no file
        if (!isEmpty && size > most - bytes_) {
            return false;
        }
        bytes_ += std::min(size, most - bytes_);
        return true;
    }

private:
    static constexpr std::uint64_t most = 1'000'000;

    std::uint64_t bytes_ = 0;
};

} // namespace petal
