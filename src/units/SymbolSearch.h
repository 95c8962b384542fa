#pragma once

#include "units/FileIndex.h"
#include "units/Folders.h"
#include "units/LostUnits.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace units {

/// A folder that a path symbol may mean.
struct SymbolFolder {
    std::string symbol; ///< without "$"
    std::filesystem::path folder;
    std::uint64_t found = 0; ///< the number of lost units that exist with that folder
    std::uint64_t units = 0; ///< the number of lost units of the symbol
};

/// Infers the folders that path symbols mean. A unit "$X\a\b.cat" and a file "F/a/b.cat" suggest that X is F. Of the
/// suggested folders, the one wins that has most of the symbol's lost units; then the one with the shortest path, then
/// the first by its bytes.
///
/// Two sources suggest folders: the files below the given folders, each folder listed once for all calls, and the
/// folders above each file that names a lost unit. The result depends on the disk and the lost units alone. Used by one
/// thread. Cost grows with the number of files and units.
class SymbolSearch {
public:
    /// Searches `folders` completely, and `besides` in their order until they have more than 100,000 entries together.
    SymbolSearch(std::vector<std::filesystem::path> folders, std::vector<std::filesystem::path> besides)
        : folders_(std::move(folders)), besides_(std::move(besides)) {}

    /// A folder for each symbol that has led to no unit yet, the symbol with the most lost units first. Omits symbols
    /// without a fitting folder, symbols that "SYMBOL=FOLDER" cannot express, and all beyond the first 100.
    [[nodiscard]] std::vector<SymbolFolder> find(const LostUnits& lost);

private:
    using Votes = std::map<std::string, std::uint64_t>; // the number of units that suggest a folder

    void list();
    [[nodiscard]] std::vector<Votes> votesOfFiles(const std::vector<const LostUnits::OfSymbol*>& symbols);
    [[nodiscard]] Votes votesOfFoldersAbove(const LostUnits::OfSymbol& units);
    [[nodiscard]] SymbolFolder best(const LostUnits::OfSymbol& units, const Votes& votes);
    [[nodiscard]] std::string shownPath(const std::string& folder) const;

    struct Root {
        std::string given;
        std::string path; // absolute, without links
    };

    std::vector<std::filesystem::path> folders_;
    std::vector<std::filesystem::path> besides_;
    std::vector<Root> roots_; // both, once they are listed
    FileIndex index_;
    Folders disk_;
    bool isListed_ = false;
};

/// Maps the inferred symbols in `locator`, except those that are mapped already, and returns the new ones. `survey`
/// must return the units that are lost with the current locator. It is called again as long as new symbols are mapped,
/// since units that are found then may name others; at most 8 times.
[[nodiscard]] std::vector<SymbolFolder> mapSymbols(UnitLocator& locator, SymbolSearch& search,
                                                   const std::function<LostUnits()>& survey);

} // namespace units
