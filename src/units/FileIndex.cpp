#include "units/FileIndex.h"

#include "units/Folders.h"

#include <algorithm>
#include <tuple>

namespace units {

namespace fs = std::filesystem;

std::size_t FileIndex::add(const fs::path& folder, std::size_t most) {
    std::error_code error;
    const fs::path root = fs::canonical(folder, error);
    if (error) {
        return 0;
    }
    std::size_t count = 0;
    std::vector<std::string> folders{root};
    std::vector<File> files;
    for (std::size_t at = 0; at < folders.size(); ++at) {
        if (listed_.contains(folders[at])) {
            continue;
        }
        fs::directory_iterator entry(folders[at], error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (++count > most) {
                return count;
            }
            std::error_code unknown;
            if (entry->symlink_status(unknown).type() == fs::file_type::directory) {
                folders.push_back(entry->path());
            } else if (entry->is_regular_file(unknown)) {
                files.push_back(
                    {lowerCase(entry->path().filename().native()), static_cast<std::uint32_t>(folders_.size() + at)});
            }
        }
    }
    listed_.insert(folders.begin(), folders.end());
    std::ranges::move(folders, std::back_inserter(folders_));
    std::ranges::move(files, std::back_inserter(files_));
    isSorted_ = false;
    return count;
}

std::span<const FileIndex::File> FileIndex::find(const std::string& name) {
    if (!isSorted_) {
        std::ranges::sort(files_, {}, [](const File& file) { return std::tie(file.name, file.folder); });
        isSorted_ = true;
    }
    const std::string lower = lowerCase(name);
    const auto begin = std::ranges::lower_bound(files_, lower, {}, &File::name);
    const auto end = std::find_if(begin, files_.end(), [&](const File& file) { return file.name != lower; });
    return {begin, end};
}

} // namespace units
