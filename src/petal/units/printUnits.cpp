#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "petal/units/UnitsForm.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"
#include "petal/units/unitTrees.h"

#include <algorithm>
#include <system_error>

namespace petal {

namespace {

void note(const units::UnitTree& tree, const units::PathSymbols& symbols, UnitFindings& findings) {
    findings.lost.add(units::lossesOf(tree, symbols));
    for (const units::ResolvedFile& file : tree.files) {
        for (const units::Unit& unit : file.units) {
            const std::uint64_t lost = units::isLost(unit) ? 1 : 0;
            findings.lostCount += lost;
            if (const std::string symbol(units::pathSymbol(unit.name)); !symbol.empty()) {
                SymbolUse& use = findings.symbols[units::lowerCase(symbol)];
                use.symbol = use.symbol.empty() ? symbol : use.symbol;
                ++use.units;
                use.missing += lost;
            }
        }
    }
}

/// Writes the units of all files, and reports the files that cannot be read. Returns how many those are.
std::size_t write(const UnitsRequest& request, UnitsForm& form, UnitFindings& findings) {
    units::UnitLocator locator = makeUnitLocator(request.units);
    std::vector<std::filesystem::path> folders;
    std::ranges::transform(request.files, std::back_inserter(folders), units::folderOf);
    units::SymbolSearch search({}, std::move(folders));
    if (mapsAutomatically(request.units)) {
        findings.mapped = units::mapSymbols(locator, search, [&] { return lossesOf(request.files, locator); });
    }
    std::size_t failures = 0;
    for (const std::string& path : request.files) {
        try {
            const units::UnitTree tree = readModelTree(path, locator);
            form.write(path, tree);
            note(tree, locator.getSymbols(), findings);
        } catch (const Failure& failure) {
            ++failures;
            form.writeFailure(path, failure.what());
            printFailure(failure.what(), "");
        }
    }
    findings.suggestions = search.find(findings.lost);
    form.end(findings, locator.getSymbols());
    return failures;
}

} // namespace

void printUnits(const UnitsRequest& request) {
    UnitFindings findings;
    std::size_t failures = 0;
    try {
        const auto output = ModelOutput::open(std::nullopt);
        text::BufferedOutput buffered(*output);
        const auto form = UnitsForm::open(buffered, request.asJson);
        failures = write(request, *form, findings);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
    if (failures > 0) {
        throw Failure(
            request.files.size() == 1 ? Outcome::inputNotRead : Outcome::someFailed,
            std::to_string(failures) + " of " + std::to_string(request.files.size()) + " files could not be read", "");
    }
    if (findings.lostCount > 0 && request.units.mode == "require") {
        throw Failure(Outcome::unitMissing,
                      counted(findings.lostCount, "controlled unit") + (findings.lostCount == 1 ? " is" : " are") +
                          " missing",
                      "--path-map and --unit-dir say where to search.");
    }
}

} // namespace petal
