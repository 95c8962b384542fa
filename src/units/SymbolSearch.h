#pragma once

#include "units/FileIndex.h"
#include "units/Folders.h"
#include "units/LostUnits.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace units {

/// A folder that a path symbol may stand for.
struct SymbolFolder {
    std::string symbol; ///< without "$"
    std::filesystem::path folder;
    std::uint64_t found = 0; ///< how many of the lost units are where their names then lead
    std::uint64_t units = 0; ///< how many there are
};

/// Finds out what path symbols must stand for: a unit "$X\a\b.cat" for which there is a file "F/a/b.cat" says that X is
/// F, and of the folders that the units of X speak for the one counts with which most of them are found. Among equals
/// it is the one with the shortest path, then the first by its bytes.
///
/// It looks through the given folders with all below them, each listed once whatever is asked for how often, and at the
/// folders above each file that names a unit. Costs what there are files and units. What comes out depends on nothing
/// else.
class SymbolSearch {
public:
    /// `folders` were given to be searched. `besides` are searched as well unless they hold more than 100,000 entries
    /// together, counted in their order.
    SymbolSearch(std::vector<std::filesystem::path> folders, std::vector<std::filesystem::path> besides)
        : folders_(std::move(folders)), besides_(std::move(besides)) {}

    /// What the symbols must stand for by which nothing was found. At most 100 are looked for, those with the most
    /// units. Symbols for which nothing fits, or that no path map can name, are left out.
    [[nodiscard]] std::vector<SymbolFolder> find(const LostUnits& lost);

private:
    using Votes = std::map<std::string, std::uint64_t>; // how many units speak for a folder

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

/// Maps, in `locator`, each path symbol to what it must stand for, unless it is mapped, and returns those that it
/// mapped. `survey` tells what is lost with the locator as it is; it is asked again as long as that helps, since units
/// that are found may name more, but 8 times at most.
[[nodiscard]] std::vector<SymbolFolder> mapSymbols(UnitLocator& locator, SymbolSearch& search,
                                                   const std::function<LostUnits()>& survey);

} // namespace units
