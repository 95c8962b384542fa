#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace units {

/// `text` with the letters of ASCII in lower case.
[[nodiscard]] std::string lowerCase(std::string_view text);

/// The folder of a file; "." when its path names none.
[[nodiscard]] std::filesystem::path folderOf(const std::filesystem::path& file);

/// Finds files by names that were written on a system that ignores case. A name that exists as it is written is always
/// found. For all others each folder is listed once, so later changes on the disk are not seen. A folder that cannot be
/// listed counts as empty. Used by one thread.
class Folders {
public:
    /// The regular file at the path `parts` from `folder`; links are followed. A part that does not exist as written is
    /// replaced by the first name that differs only in case.
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::filesystem::path& folder,
                                                            std::span<const std::string> parts);
    /// Every file below `folder` whose name differs from `name` at most in case, by path. Links to folders are not
    /// followed.
    [[nodiscard]] const std::vector<std::filesystem::path>& findBelow(const std::filesystem::path& folder,
                                                                      const std::string& name);

    /// The folders that `find` has listed since the last call.
    [[nodiscard]] std::vector<std::filesystem::path> takeListed() { return std::exchange(newlyListed_, {}); }
    /// Lists a folder now, if it is not yet, so that `find` need not; without effect once a million names are held.
    void list(const std::filesystem::path& folder);

private:
    static constexpr std::size_t mostNames = 1'000'000;         // that are listed ahead of their use
    using Names = std::unordered_map<std::string, std::string>; // by themselves in lower case
    using FilesByName = std::unordered_map<std::string, std::vector<std::filesystem::path>>;

    const Names& namesIn(const std::filesystem::path& folder);
    const FilesByName& filesBelow(const std::filesystem::path& folder);

    std::map<std::filesystem::path, Names> listed_;
    std::size_t names_ = 0; // in `listed_`
    std::vector<std::filesystem::path> newlyListed_;
    std::map<std::filesystem::path, FilesByName> below_;
};

} // namespace units
