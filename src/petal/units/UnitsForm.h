#pragma once

#include "text/Output.h"
#include "units/LostUnits.h"
#include "units/SymbolSearch.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace petal {

/// The uses of a path symbol, after the search for all units.
struct SymbolUse {
    std::string symbol; // as first written
    std::uint64_t units = 0;
    std::uint64_t missing = 0;
};

/// The findings about the units of all models.
struct UnitFindings {
    units::LostUnits lost;
    std::uint64_t lostCount = 0;
    std::map<std::string, SymbolUse> symbols; // by the symbol in lower case
    std::vector<units::SymbolFolder> mapped;  // by "--path-map auto"
    std::vector<units::SymbolFolder> suggestions;
};

/// An output form of `petal units`. All functions throw what the output throws.
class UnitsForm {
public:
    UnitsForm(const UnitsForm&) = delete;
    UnitsForm& operator=(const UnitsForm&) = delete;
    virtual ~UnitsForm() = default;

    /// Opens the form for people, which writes each model at once, or the JSON form of docs/units.md. `output` must
    /// live as long.
    [[nodiscard]] static std::unique_ptr<UnitsForm> open(text::BufferedOutput& output, bool asJson);

    virtual void write(const std::string& path, const units::UnitTree& tree) = 0;
    /// Writes a model that cannot be read.
    virtual void writeFailure(const std::string& path, const std::string& reason) = 0;
    /// Called once, as the last operation. `symbols` must be those of the search.
    virtual void end(const UnitFindings& findings, const units::PathSymbols& symbols) = 0;

protected:
    UnitsForm() = default;
};

} // namespace petal
