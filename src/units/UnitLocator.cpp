#include "units/UnitLocator.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace units {

namespace fs = std::filesystem;

namespace {

/// The number of last parts that a path and a name share, ignoring case.
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
    const std::string symbol(pathSymbol(name));
    if (symbol.empty()) {
        return folders_.find(name.symbol.empty() && name.isAbsolute ? "/" : folder, name.parts);
    }
    const std::optional<fs::path> mapped = symbols_.find(symbol);
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
    return {.file = *best,
            .remark =
                equals == 1 ? "found by its name" : "the first of " + std::to_string(equals) + " files of that name"};
}

void UnitLocator::listSearchFolders() {
    for (const fs::path& folder : searchFolders_) {
        static_cast<void>(folders_.findBelow(folder, ""));
    }
}

void UnitLocator::list(std::span<const fs::path> folders) {
    std::ranges::for_each(folders, [this](const fs::path& folder) { folders_.list(folder); });
}

Located UnitLocator::locate(const UnitName& name, const fs::path& folder, const fs::path& modelFolder) {
    if (name.parts.empty()) {
        return {.file = std::nullopt, .remark = "it names no file", .fault = UnitFault::unnamed};
    }
    if (auto found = whereNamed(name, folder)) {
        return {.file = std::move(found), .remark = "", .isWhereNamed = true};
    }
    for (const fs::path& place : {folder, modelFolder}) {
        if (auto found = beside(name, place)) {
            return {.file = std::move(found), .remark = "found beside the model"};
        }
    }
    if (Located found = below(name); found.file) {
        return found;
    }
    if (const std::string symbol(pathSymbol(name)); !symbol.empty() && !symbols_.find(symbol)) {
        return {.file = std::nullopt,
                .remark = "nothing says what $" + symbol + " stands for",
                .fault = UnitFault::symbolUnset};
    }
    return {.file = std::nullopt, .remark = "there is no such file", .fault = UnitFault::absent};
}

} // namespace units
