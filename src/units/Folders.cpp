#include "units/Folders.h"

#include <algorithm>

namespace units {

namespace fs = std::filesystem;

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return lower;
}

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : ".";
}

const Folders::Names& Folders::namesIn(const fs::path& folder) {
    const auto [place, isNew] = listed_.try_emplace(folder);
    if (isNew) {
        std::error_code error;
        for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
            const std::string name = at->path().filename();
            const auto [kept, isFirst] = place->second.try_emplace(lowerCase(name), name);
            if (!isFirst) {
                kept->second = std::min(kept->second, name);
            }
        }
        names_ += place->second.size();
        newlyListed_.push_back(folder);
    }
    return place->second;
}

void Folders::list(const fs::path& folder) {
    if (names_ < mostNames && !listed_.contains(folder)) {
        static_cast<void>(namesIn(folder));
        newlyListed_.pop_back();
    }
}

std::optional<fs::path> Folders::find(const fs::path& folder, std::span<const std::string> parts) {
    fs::path at = folder;
    std::error_code error;
    for (const std::string& part : parts) {
        if (part != ".." && !fs::exists(at / part, error)) {
            const Names& names = namesIn(at);
            const auto found = names.find(lowerCase(part));
            if (found == names.end()) {
                return std::nullopt;
            }
            at /= found->second;
        } else {
            at /= part;
        }
    }
    return fs::is_regular_file(at, error) ? std::optional(at) : std::nullopt;
}

const Folders::FilesByName& Folders::filesBelow(const fs::path& folder) {
    const auto [place, isNew] = below_.try_emplace(folder);
    if (isNew) {
        std::error_code error;
        constexpr auto options = fs::directory_options::skip_permission_denied;
        for (fs::recursive_directory_iterator at(folder, options, error), end; !error && at != end;
             at.increment(error)) {
            std::error_code unknown;
            if (at->is_regular_file(unknown)) {
                place->second[lowerCase(at->path().filename().string())].push_back(at->path());
            }
        }
        for (auto& [name, files] : place->second) {
            std::ranges::sort(files);
        }
    }
    return place->second;
}

const std::vector<fs::path>& Folders::findBelow(const fs::path& folder, const std::string& name) {
    static const std::vector<fs::path> none;
    const FilesByName& files = filesBelow(folder);
    const auto found = files.find(lowerCase(name));
    return found != files.end() ? found->second : none;
}

} // namespace units
