#include "units/LostUnits.h"

#include "units/localText.h"

#include <algorithm>
#include <tuple>

namespace units {

namespace {

constexpr std::size_t mostTold = std::size_t{4} << 20; // bytes of the texts of a model's units
constexpr std::string_view separators = "/\\";

bool isSoughtByName(UnitFault fault) {
    return fault == UnitFault::symbolUnset || fault == UnitFault::absent;
}

/// The start of an absolute name: the drive or root, and the folder below it.
std::string rootOf(const std::string& fileName) {
    const std::size_t drive = fileName.find(':') == 1 ? 2 : 0;
    const std::size_t first = fileName.find_first_not_of(separators, drive);
    const std::size_t end = fileName.find_first_of(separators, first);
    return fileName.substr(0, end != std::string::npos ? end : std::min(first, fileName.size()));
}

/// The symbol, folder or error that the cause is about; empty if the fault is enough.
std::string subjectOf(const LostUnit& unit, const UnitName& name) {
    const std::string symbol(pathSymbol(name));
    switch (unit.fault) {
    case UnitFault::symbolUnset:
        return "$" + symbol;
    case UnitFault::absent:
        return !symbol.empty() ? unit.place + " ($" + symbol + ")" : name.isAbsolute ? rootOf(unit.fileName) : "";
    case UnitFault::unreadable:
        return unit.remark.substr(std::min(unit.remark.size(), unreadableRemark.size()));
    default:
        return "";
    }
}

std::string pathOf(const std::vector<std::string>& parts) {
    std::string path;
    for (const std::string& part : parts) {
        path += (path.empty() ? "" : "/") + part;
    }
    return path;
}

void keepFirst(std::string& kept, const std::string& text) {
    if (kept.empty() || text < kept) {
        kept = text;
    }
}

} // namespace

ModelLosses lossesOf(const UnitTree& tree, const PathSymbols& symbols) {
    ModelLosses losses;
    std::size_t told = 0;
    for (const ResolvedFile& file : tree.files) {
        for (const Unit& unit : file.units) {
            const std::string symbol(pathSymbol(unit.name));
            if (unit.isWhereNamed && !symbol.empty()) {
                losses.provenSymbols.insert(lowerCase(symbol));
            }
            if (!isLost(unit)) {
                continue;
            }
            LostUnit lost{.fault = unit.fault,
                          .fileName = localText(unit.reference.fileName, file.contents.charSet),
                          .folder = folderOf(file.path),
                          .place = unit.path,
                          .remark = unit.remark};
            if (unit.fault == UnitFault::absent && !symbol.empty()) {
                lost.place = symbols.find(symbol).value_or("");
            }
            told += lost.fileName.size() + lost.folder.size() + lost.place.size() + lost.remark.size();
            if (told > mostTold) {
                ++losses.untold;
            } else {
                losses.units.push_back(std::move(lost));
            }
        }
    }
    return losses;
}

void LostUnits::addTo(std::map<CauseKey, LossCause>& causes, const LostUnit& unit) {
    const UnitName name = parseUnitName(unit.fileName);
    const std::string subject = subjectOf(unit, name);
    LossCause& cause = causes[{unit.fault, lowerCase(subject)}];
    cause.fault = unit.fault;
    keepFirst(cause.subject, subject);
    keepFirst(cause.example, unit.place.empty() || isSoughtByName(unit.fault) ? unit.fileName : unit.place);
    ++cause.units;
    const std::string symbol(pathSymbol(name));
    if (symbol.empty() || !isSoughtByName(unit.fault)) {
        return;
    }
    OfSymbol& ofSymbol = symbols_[lowerCase(symbol)];
    keepFirst(ofSymbol.symbol, symbol);
    ++ofSymbol.count;
    OfSymbol::Unit& same = ofSymbol.units[lowerCase(pathOf(name.parts))];
    if (same.parts.empty() || name.parts < same.parts) {
        same.parts = name.parts;
    }
    ++same.count;
    same.folders.insert(unit.folder);
}

void LostUnits::add(const ModelLosses& model) {
    std::map<CauseKey, LossCause> causes;
    for (const LostUnit& unit : model.units) {
        addTo(causes, unit);
    }
    if (model.untold > 0) {
        causes[{UnitFault::none, ""}].units = model.untold;
    }
    for (const auto& [key, cause] : causes) {
        LossCause& all = causes_[key];
        all.fault = cause.fault;
        keepFirst(all.subject, cause.subject);
        keepFirst(all.example, cause.example);
        all.units += cause.units;
        ++all.models;
    }
    provenSymbols_.insert(model.provenSymbols.begin(), model.provenSymbols.end());
}

std::vector<LossCause> LostUnits::causes() const {
    std::vector<LossCause> causes;
    std::ranges::transform(causes_, std::back_inserter(causes), [](const auto& entry) { return entry.second; });
    std::ranges::stable_sort(causes, std::ranges::greater{}, &LossCause::units);
    return causes;
}

std::vector<const LostUnits::OfSymbol*> LostUnits::vainSymbols() const {
    std::vector<const OfSymbol*> vain;
    for (const auto& [symbol, units] : symbols_) {
        if (!provenSymbols_.contains(symbol)) {
            vain.push_back(&units);
        }
    }
    std::ranges::stable_sort(vain, std::ranges::greater{}, [](const OfSymbol* units) { return units->count; });
    return vain;
}

} // namespace units
