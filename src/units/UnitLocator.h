#pragma once

#include "units/Folders.h"
#include "units/PathSymbols.h"
#include "units/UnitName.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace units {

/// Why the content of a unit cannot be had.
enum class UnitFault : std::uint8_t {
    none,
    unnamed,     ///< it names no file
    symbolUnset, ///< nothing says what its path symbol stands for
    absent,      ///< there is no such file
    unreadable,
    noModel,   ///< the file is no model file
    otherKind, ///< the file holds another kind of object
    cycle,     ///< it stands in itself
};

inline constexpr UnitFault lastFault = UnitFault::cycle;

/// Where a unit's file was found, or why not.
struct Located {
    std::optional<std::filesystem::path> file;
    std::string remark; ///< half a sentence for people: how it was found when not where it is named, or why it was not
    UnitFault fault = UnitFault::none;
    bool isWhereNamed = false;
};

/// Finds the files of controlled units, whose names often lead to folders of another machine.
class UnitLocator {
public:
    /// `searchFolders` are looked through, with all below them, for files that are not where they are named.
    UnitLocator(PathSymbols symbols, std::vector<std::filesystem::path> searchFolders)
        : symbols_(std::move(symbols)), searchFolders_(std::move(searchFolders)) {}

    /// The file of that name, named by a file in `folder` ($CURDIR) that belongs to the model in `modelFolder`. It is
    /// looked for, in this order, where it is named; at the longest ending of its name that there is beside the file
    /// that names it, then beside the model; and below the search folders, where the one counts whose path shares the
    /// longest ending with the name, the first by path among equals.
    [[nodiscard]] Located locate(const UnitName& name, const std::filesystem::path& folder,
                                 const std::filesystem::path& modelFolder);

    /// Lists what is below the search folders, which is otherwise done when a unit is first looked for there. A process
    /// that does so before it forks spares its children the time.
    void listSearchFolders();
    /// Makes a path symbol stand for a folder from now on.
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
