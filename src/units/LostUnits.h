#pragma once

#include "units/UnitTree.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace units {

/// A unit whose content is missing from a model: the cause, and the name to search for.
struct LostUnit {
    UnitFault fault = UnitFault::none;
    std::string fileName; ///< as the model names it, in the local encoding
    std::string folder;   ///< of the file that names it
    std::string place;    ///< the folder of its path symbol, or the path of a file that was refused; may be empty
    std::string remark;   ///< of the unit
};

/// The lost units of one model.
struct ModelLosses {
    std::vector<LostUnit> units;
    std::uint64_t untold = 0;            ///< the number of further ones: the texts of `units` are limited to 4 MB
    std::set<std::string> provenSymbols; ///< path symbols in lower case by which a unit was found
};

[[nodiscard]] ModelLosses lossesOf(const UnitTree& tree, const PathSymbols& symbols);

/// The lost units of all models that share a cause.
struct LossCause {
    UnitFault fault = UnitFault::none; ///< `none` for the units in `ModelLosses::untold`
    std::string subject;               ///< "$X", a folder, "F:\a" ..., if the cause has one
    std::uint64_t units = 0;
    std::uint64_t models = 0;
    std::string example; ///< the first of the files' names by its bytes
};

/// Groups the lost units of many models by cause and by path symbol. The result does not depend on the order of the
/// models. Time is proportional to the lost units, memory to the different names.
class LostUnits {
public:
    /// The lost units of a path symbol.
    struct OfSymbol {
        struct Unit {
            std::vector<std::string> parts; ///< of the name, after the symbol
            std::uint64_t count = 0;
            std::set<std::string> folders; ///< of the files that name it
        };
        std::string symbol; ///< as it is written; the first by its bytes
        std::uint64_t count = 0;
        std::map<std::string, Unit> units; ///< by the parts of the name in lower case
    };

    void add(const ModelLosses& model);
    [[nodiscard]] bool isEmpty() const { return causes_.empty(); }
    /// The causes with the most units first; among equals by fault and subject.
    [[nodiscard]] std::vector<LossCause> causes() const;
    /// The path symbols that led to no unit in any model and have lost units, the one with the most first, then by
    /// name. Valid until `add`.
    [[nodiscard]] std::vector<const OfSymbol*> vainSymbols() const;

private:
    using CauseKey = std::pair<UnitFault, std::string>; // the subject in lower case

    void addTo(std::map<CauseKey, LossCause>& causes, const LostUnit& unit);

    std::map<CauseKey, LossCause> causes_;
    std::map<std::string, OfSymbol> symbols_; // by the symbol in lower case
    std::set<std::string> provenSymbols_;     // likewise
};

} // namespace units
