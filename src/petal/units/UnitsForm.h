#pragma once

#include "text/Output.h"
#include "units/LostUnits.h"
#include "units/SymbolSearch.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace petal {

/// What is known of a path symbol when all units have been looked for.
struct SymbolUse {
    std::string symbol; // as it was first written
    std::uint64_t units = 0;
    std::uint64_t missing = 0;
};

/// All that is told of the units of some models, but for these themselves.
struct UnitFindings {
    units::LostUnits lost;
    std::uint64_t lostCount = 0;
    std::map<std::string, SymbolUse> symbols; // by the symbol in lower case
    std::vector<units::SymbolFolder> mapped;  // by "auto"
    std::vector<units::SymbolFolder> suggestions;
};

/// Where `petal units` writes what it finds. Throws what the output throws.
class UnitsForm {
public:
    UnitsForm(const UnitsForm&) = delete;
    UnitsForm& operator=(const UnitsForm&) = delete;
    virtual ~UnitsForm() = default;

    /// The form for people, each model as soon as it comes, or the one that docs/units.md lays down for programs.
    /// `output` must live as long.
    [[nodiscard]] static std::unique_ptr<UnitsForm> open(text::BufferedOutput& output, bool asJson);

    virtual void write(const std::string& path, const units::UnitTree& tree) = 0;
    /// A model that nothing can be told of.
    virtual void writeFailure(const std::string& path, const std::string& reason) = 0;
    /// `symbols` as they were when the units were looked for. Called once, as the last operation.
    virtual void end(const UnitFindings& findings, const units::PathSymbols& symbols) = 0;

protected:
    UnitsForm() = default;
};

} // namespace petal
