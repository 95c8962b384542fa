#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

namespace units {

/// Looks up the regular files below some folders by name. Each folder is listed once; later changes on the disk are not
/// seen. Links to folders are not followed, and a folder that cannot be listed counts as empty. Used by one thread. A
/// file takes about 50 bytes; lookups take logarithmic time.
class FileIndex {
public:
    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

    struct File {
        std::string name; ///< in lower case
        std::uint32_t folder;
    };

    /// Adds the files below the folder, except in folders that are listed already, and returns the number of entries
    /// read. If there are more than `most`, it stops, adds nothing and returns `most` + 1.
    std::size_t add(const std::filesystem::path& folder, std::size_t most = unlimited);
    /// The files whose name differs from `name` at most in case. Valid until `add`.
    [[nodiscard]] std::span<const File> find(const std::string& name);
    /// The path of a file's folder: absolute, without links, with the case that it has on the disk.
    [[nodiscard]] const std::string& folderOf(const File& file) const { return folders_[file.folder]; }

private:
    std::vector<std::string> folders_;
    std::unordered_set<std::string> listed_; // the same
    std::vector<File> files_;
    bool isSorted_ = true; // the files, by name and folder
};

} // namespace units
