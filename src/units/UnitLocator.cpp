#include "units/UnitLocator.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace units {

namespace fs = std::filesystem;

namespace {

constexpr const char* currentFolder = "curdir";

/// How many of the last parts of a path and a name are the same but for case.
std::size_t sharedEnding(const fs::path& path, const std::vector<std::string>& parts) {
    auto at = path.end();
    std::size_t count = 0;
    while (count < parts.size() && at != path.begin() &&
           lowerCase((--at)->string()) == lowerCase(parts[parts.size() - 1 - count])) {
        ++count;
    }
    return count;
}

} // namespace

std::optional<fs::path> UnitLocator::whereNamed(const UnitName& name, const fs::path& folder) {
    if (lowerCase(name.symbol) == currentFolder || (name.symbol.empty() && !name.isAbsolute)) {
        return folders_.find(folder, name.parts);
    }
    if (name.symbol.empty()) {
        return folders_.find("/", name.parts);
    }
    const std::optional<fs::path> mapped = symbols_.find(name.symbol);
    return mapped ? folders_.find(*mapped, name.parts) : std::nullopt;
}

std::optional<fs::path> UnitLocator::beside(const UnitName& name, const fs::path& folder) {
    for (std::span<const std::string> ending = name.parts; !ending.empty(); ending = ending.subspan(1)) {
        if (auto found = folders_.find(folder, ending)) {
            return found;
        }
    }
    return std::nullopt;
}

Located UnitLocator::below(const UnitName& name) {
    const fs::path* best = nullptr;
    std::size_t longest = 0;
    std::size_t equals = 0;
    for (const fs::path& folder : searchFolders_) {
        for (const fs::path& file : folders_.findBelow(folder, name.parts.back())) {
            const std::size_t shared = sharedEnding(file, name.parts);
            equals = shared == longest ? equals + 1 : shared > longest ? 1 : equals;
            if (shared > longest) {
                best = &file;
                longest = shared;
            }
        }
    }
    if (best == nullptr) {
        return {};
    }
    return {*best,
            equals == 1 ? "found by its name" : "the first of " + std::to_string(equals) + " files of that name"};
}

Located UnitLocator::locate(const UnitName& name, const fs::path& folder, const fs::path& modelFolder) {
    if (name.parts.empty()) {
        return {std::nullopt, "it names no file"};
    }
    if (auto found = whereNamed(name, folder)) {
        return {std::move(found), ""};
    }
    for (const fs::path& place : {folder, modelFolder}) {
        if (auto found = beside(name, place)) {
            return {std::move(found), "found beside the model"};
        }
    }
    if (Located found = below(name); found.file) {
        return found;
    }
    const bool isSymbol = !name.symbol.empty() && lowerCase(name.symbol) != currentFolder;
    return {std::nullopt, isSymbol && !symbols_.find(name.symbol) ? "nothing says what $" + name.symbol + " stands for"
                                                                  : "there is no such file"};
}

} // namespace units
