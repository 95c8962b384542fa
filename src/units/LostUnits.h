#pragma once

#include "units/UnitTree.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace units {

/// A unit whose content a model lacks: why, and what there is to look for.
struct LostUnit {
    UnitFault fault = UnitFault::none;
    std::string fileName; ///< as the model names it, in the local encoding
    std::string folder;   ///< of the file that names it
    std::string place;    ///< what its path symbol stands for, or the path of a file that is of no use; may be empty
    std::string remark;   ///< of the unit
};

/// What is lost of one model.
struct ModelLosses {
    std::vector<LostUnit> units;
    std::uint64_t untold = 0;            ///< how many more there are: the texts of a model's units end at 4 MB
    std::set<std::string> provenSymbols; ///< path symbols in lower case by which a unit was found
};

[[nodiscard]] ModelLosses lossesOf(const UnitTree& tree, const PathSymbols& symbols);

/// What units of any number of models share that are lost for one cause.
struct LossCause {
    UnitFault fault = UnitFault::none; ///< `none` for those that are not told of one by one
    std::string subject;               ///< "$X", a folder, "F:\a" ..., as the cause is about one
    std::uint64_t units = 0;
    std::uint64_t models = 0;
    std::string example; ///< of the units' files, the first by its bytes
};

/// The units of any number of models that are lost. What it tells does not depend on the order in which the models
/// come. Costs, time and memory, what the different names of units come to.
class LostUnits {
public:
    /// The lost units of a path symbol.
    struct OfSymbol {
        struct Unit {
            std::vector<std::string> parts; ///< of the name, behind the symbol
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
    /// The path symbols, without "$", by which no unit of any model was found and some were looked for in vain; the one
    /// with the most units first, then by name.
    [[nodiscard]] std::vector<const OfSymbol*> vainSymbols() const;

private:
    using CauseKey = std::pair<UnitFault, std::string>; // the subject in lower case

    void addTo(std::map<CauseKey, LossCause>& causes, const LostUnit& unit);

    std::map<CauseKey, LossCause> causes_;
    std::map<std::string, OfSymbol> symbols_; // by the symbol in lower case
    std::set<std::string> provenSymbols_;     // likewise
};

} // namespace units
