#include "units/SymbolSearch.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace units {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t mostBeside = 100'000; // entries
constexpr std::size_t mostSymbols = 100;
constexpr std::size_t mostLookedAbove = 1000; // units of a symbol for which the folders above are searched
constexpr int mostSurveys = 8;

/// The parts of a name with each ".." resolved; empty if one leads above the name's start.
std::vector<std::string> straightened(const std::vector<std::string>& parts) {
    std::vector<std::string> straight;
    for (const std::string& part : parts) {
        if (part != "..") {
            straight.push_back(part);
        } else if (straight.empty()) {
            return {};
        } else {
            straight.pop_back();
        }
    }
    return straight;
}

/// Whether "SYMBOL=FOLDER" can express the symbol.
bool canBeMapped(const std::string& symbol) {
    return !symbol.empty() && !symbol.starts_with('$') && symbol.find('=') == std::string::npos;
}

bool isBetter(const SymbolFolder& one, const SymbolFolder& other) {
    const std::string& path = one.folder.native();
    const std::string& otherPath = other.folder.native();
    return std::tuple(other.found, path.size(), std::string_view(path)) <
           std::tuple(one.found, otherPath.size(), std::string_view(otherPath));
}

/// The names of units without their symbols, to recognize files that they may refer to.
class Endings {
public:
    void add(const std::vector<std::string>& parts, std::size_t symbol, std::uint64_t count) {
        std::string path;
        for (const std::string& part : parts) {
            path += "/" + lowerCase(part);
        }
        depths_[lowerCase(parts.back())].insert(parts.size());
        units_[path].push_back({symbol, count});
    }

    /// Calls `take` with each folder that units suggest because of a file of that name in `folder`: with the symbol,
    /// the suggested folder and the number of units.
    template <class Take>
    void match(const std::string& name, const std::string& folder, Take take) const {
        const std::string lower = lowerCase(folder) + "/" + name;
        std::size_t begin = lower.size();
        std::size_t depth = 0;
        for (const std::size_t wanted : depths_.at(name)) {
            for (; depth < wanted && begin > 0; ++depth) {
                begin = lower.rfind('/', begin - 1);
            }
            if (depth < wanted) {
                return;
            }
            if (const auto found = units_.find(lower.substr(begin)); found != units_.end()) {
                for (const Units& units : found->second) {
                    take(units.symbol, begin == 0 ? "/" : folder.substr(0, begin), units.count);
                }
            }
        }
    }

    /// Calls `take` with each file name of a unit, in lower case.
    template <class Take>
    void eachName(Take take) const {
        for (const auto& [name, depths] : depths_) {
            take(name);
        }
    }

private:
    struct Units {
        std::size_t symbol;
        std::uint64_t count;
    };

    // No hash tables: an attacker may choose the names.
    std::map<std::string, std::set<std::size_t>> depths_; // the numbers of parts of the names, by the last part
    std::map<std::string, std::vector<Units>> units_;     // by "/" and the parts, joined by "/"
};

} // namespace

void SymbolSearch::list() {
    if (std::exchange(isListed_, true)) {
        return;
    }
    const auto add = [this](const fs::path& folder, std::size_t most) {
        std::error_code error;
        const fs::path path = fs::canonical(folder, error);
        roots_.push_back({folder, path});
        return error ? 0 : index_.add(path, most);
    };
    for (const fs::path& folder : folders_) {
        add(folder, FileIndex::unlimited);
    }
    std::size_t left = mostBeside;
    for (const fs::path& folder : besides_) {
        left -= std::min(left, add(folder, left));
    }
}

std::vector<SymbolSearch::Votes> SymbolSearch::votesOfFiles(const std::vector<const LostUnits::OfSymbol*>& symbols) {
    Endings endings;
    for (std::size_t symbol = 0; symbol < symbols.size(); ++symbol) {
        for (const auto& [lower, unit] : symbols[symbol]->units) {
            if (const std::vector<std::string> parts = straightened(unit.parts); !parts.empty()) {
                endings.add(parts, symbol, unit.count);
            }
        }
    }
    std::vector<Votes> votes(symbols.size());
    endings.eachName([&](const std::string& name) {
        for (const FileIndex::File& file : index_.find(name)) {
            endings.match(name, index_.folderOf(file),
                          [&](std::size_t symbol, const std::string& folder, std::uint64_t count) {
                              votes[symbol][folder] += count;
                          });
        }
    });
    return votes;
}

SymbolSearch::Votes SymbolSearch::votesOfFoldersAbove(const LostUnits::OfSymbol& units) {
    Votes votes;
    std::size_t looked = 0;
    for (const auto& [lower, unit] : units.units) {
        for (const std::string& naming : unit.folders) {
            if (++looked > mostLookedAbove) {
                return votes;
            }
            std::error_code error;
            for (fs::path folder = fs::canonical(naming, error); !error && folder.has_relative_path();
                 folder = folder.parent_path()) {
                if (disk_.find(folder, unit.parts)) {
                    ++votes[folder];
                }
            }
        }
    }
    return votes;
}

std::string SymbolSearch::shownPath(const std::string& folder) const {
    for (const Root& root : roots_) {
        const bool isBelow = folder.starts_with(root.path) &&
                             (folder.size() == root.path.size() || folder[root.path.size()] == '/' || root.path == "/");
        if (isBelow && !root.path.empty()) {
            const fs::path below = fs::path(folder.substr(root.path.size())).relative_path();
            const fs::path shown = root.given == "." ? below : root.given / below;
            return shown.empty() ? "." : shown.has_filename() ? shown : shown.parent_path();
        }
    }
    if (roots_.empty() || roots_.front().given.starts_with('/')) {
        return folder;
    }
    std::error_code error;
    const fs::path relative = fs::path(folder).lexically_relative(fs::current_path(error));
    return relative.empty() ? folder : relative.string();
}

SymbolFolder SymbolSearch::best(const LostUnits::OfSymbol& units, const Votes& votes) {
    SymbolFolder best{.symbol = units.symbol, .folder = {}, .found = 0, .units = units.count};
    std::string folder;
    for (const auto& [voted, count] : votes) {
        const SymbolFolder other{.symbol = units.symbol, .folder = shownPath(voted), .found = count, .units = 0};
        if (isBetter(other, best)) {
            best.folder = other.folder;
            best.found = count;
            folder = voted;
        }
    }
    best.found = 0; // count the files that exist, not the suggestions
    for (const auto& [lower, unit] : units.units) {
        best.found += !folder.empty() && disk_.find(folder, unit.parts) ? unit.count : 0;
    }
    return best;
}

std::vector<SymbolFolder> SymbolSearch::find(const LostUnits& lost) {
    std::vector<const LostUnits::OfSymbol*> symbols = lost.vainSymbols();
    std::erase_if(symbols, [](const LostUnits::OfSymbol* units) { return !canBeMapped(units->symbol); });
    symbols.resize(std::min(symbols.size(), mostSymbols));
    std::vector<SymbolFolder> found;
    if (symbols.empty()) {
        return found;
    }
    list();
    const std::vector<Votes> votes = votesOfFiles(symbols);
    for (std::size_t symbol = 0; symbol < symbols.size(); ++symbol) {
        SymbolFolder chosen = best(*symbols[symbol], votes[symbol]);
        if (chosen.found < chosen.units) {
            const SymbolFolder above = best(*symbols[symbol], votesOfFoldersAbove(*symbols[symbol]));
            chosen = isBetter(above, chosen) ? above : chosen;
        }
        if (chosen.found > 0) {
            found.push_back(std::move(chosen));
        }
    }
    return found;
}

std::vector<SymbolFolder> mapSymbols(UnitLocator& locator, SymbolSearch& search,
                                     const std::function<LostUnits()>& survey) {
    std::vector<SymbolFolder> mapped;
    bool hasHelped = true;
    for (int surveys = 0; hasHelped && surveys < mostSurveys; ++surveys) {
        hasHelped = false;
        for (const SymbolFolder& found : search.find(survey())) {
            if (!locator.getSymbols().isMapped(found.symbol)) {
                locator.map(found.symbol, found.folder);
                mapped.push_back(found);
                hasHelped = true;
            }
        }
    }
    return mapped;
}

} // namespace units
