#pragma once

#include "units/Folders.h"
#include "units/PathSymbols.h"
#include "units/UnitName.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace units {

/// The reasons for the loss of a unit's content.
enum class UnitFault : std::uint8_t {
    none,
    unnamed,     ///< the reference names no file
    symbolUnset, ///< its path symbol has no folder
    absent,      ///< there is no such file
    unreadable,
    noModel,   ///< the file is not a model file
    otherKind, ///< the file holds another kind of object
    cycle,     ///< the unit contains itself
};

inline constexpr UnitFault lastFault = UnitFault::cycle;

/// The file of a unit, or the reason why it was not found.
struct Located {
    std::optional<std::filesystem::path> file;
    std::string remark; ///< half a sentence for people: how it was found, if not by its path, or why it was not
    UnitFault fault = UnitFault::none;
    bool isWhereNamed = false;
};

/// Finds the files of controlled units, whose names often refer to folders of another machine. Used by one thread.
/// Lists each folder once.
class UnitLocator {
public:
    /// Files that are not at their place are searched below `searchFolders`.
    UnitLocator(PathSymbols symbols, std::vector<std::filesystem::path> searchFolders)
        : symbols_(std::move(symbols)), searchFolders_(std::move(searchFolders)) {}

    /// Finds the file of a unit that is named by a file in `folder` ($CURDIR), which belongs to the model in
    /// `modelFolder`. Searches, in this order: the path that the name means; the longest ending of the name that exists
    /// below `folder`, then below `modelFolder`; and the files below the search folders, where the path with the
    /// longest common ending wins, then the first by path. Does not throw if a folder cannot be read.
    [[nodiscard]] Located locate(const UnitName& name, const std::filesystem::path& folder,
                                 const std::filesystem::path& modelFolder);

    /// Lists the files below the search folders now, instead of on the first search there. A process that forks should
    /// call it before, so that its children need not.
    void listSearchFolders();
    /// The folders that were listed since the last call; and lists folders now, so that processes that are forked later
    /// need not: see `Folders`.
    [[nodiscard]] std::vector<std::filesystem::path> takeListed() { return folders_.takeListed(); }
    void list(std::span<const std::filesystem::path> folders);
    /// Maps a path symbol to a folder for later searches.
    void map(std::string_view symbol, std::filesystem::path folder) { symbols_.map(symbol, std::move(folder)); }
    [[nodiscard]] const PathSymbols& getSymbols() const { return symbols_; }

private:
    std::optional<std::filesystem::path> whereNamed(const UnitName& name, const std::filesystem::path& folder);
    std::optional<std::filesystem::path> beside(const UnitName& name, const std::filesystem::path& folder);
    Located below(const UnitName& name);

    PathSymbols symbols_;
    std::vector<std::filesystem::path> searchFolders_;
    Folders folders_;
};

} // namespace units
