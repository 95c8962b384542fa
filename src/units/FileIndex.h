#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

namespace units {

/// The regular files below some folders, by name. Each folder is listed once, and what changes on the disk afterwards
/// is not seen. Links to folders are not followed; a folder that cannot be listed is one without files. A file takes
/// about 50 bytes.
class FileIndex {
public:
    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

    struct File {
        std::string name; ///< in lower case
        std::uint32_t folder;
    };

    /// Adds what is below the folder, but for folders that were listed before, and returns the number of entries. With
    /// more than `most` of them it adds nothing and returns a greater number.
    std::size_t add(const std::filesystem::path& folder, std::size_t most = unlimited);
    /// The files whose name is `name` but for case. Valid until more is added.
    [[nodiscard]] std::span<const File> find(const std::string& name);
    /// The path of a file's folder: absolute and without links, in the case of the disk.
    [[nodiscard]] const std::string& folderOf(const File& file) const { return folders_[file.folder]; }

private:
    std::vector<std::string> folders_;
    std::unordered_set<std::string> listed_; // the same
    std::vector<File> files_;
    bool isSorted_ = true; // the files, by name and folder
};

} // namespace units
