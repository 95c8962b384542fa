#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/fileFailure.h"
#include "petal/printFailure.h"
#include "petal/standardOutput.h"
#include "petal/units/unitOptions.h"
#include "text/printableText.h"
#include "units/UnitTree.h"
#include "units/localText.h"

#include <array>
#include <system_error>

namespace petal {

namespace {

/// What is said of a unit in each state, in the order of `UnitState`.
constexpr std::array stateWords{"found", "missing", "unusable", "found already", "cycle"};

std::string unitLines(const units::ResolvedFile& file, const units::Unit& unit) {
    const auto text = [&](const std::string& bytes) {
        return text::printableText(units::localText(bytes, file.contents.charSet));
    };
    std::string lines = "  " + text(unit.reference.kind) + " " + text(unit.reference.name) + " (" +
                        text::printableText(file.path.string()) + " line " + std::to_string(unit.reference.place.line) +
                        "): " + text(unit.reference.fileName) + "\n    " +
                        stateWords[static_cast<std::size_t>(unit.state)];
    lines += unit.path.empty() ? "" : ": " + text::printableText(unit.path.string());
    lines += unit.remark.empty() ? "" : (unit.path.empty() ? ": " : " (") + text::printableText(unit.remark);
    return lines + (unit.remark.empty() || unit.path.empty() ? "\n" : ")\n");
}

/// The lines of a model; counts what is lost of it.
std::string modelLines(const std::string& path, units::UnitLocator& locator, std::size_t& lost) {
    const units::UnitTree tree = units::readUnitTree(path, locator);
    if (!tree.files[0].contents.isModel) {
        throw Failure(Outcome::inputNotRead, "'" + path + "' is no model file", "");
    }
    std::string lines;
    std::size_t count = 0;
    std::size_t lostHere = 0;
    for (const units::ResolvedFile& file : tree.files) {
        for (const units::Unit& unit : file.units) {
            lines += unitLines(file, unit);
            ++count;
            lostHere += isLost(unit) ? 1 : 0;
        }
    }
    lost += lostHere;
    return text::printableText(path) + ": " + std::to_string(count) + " controlled units, " + std::to_string(lostHere) +
           " of them missing\n" + lines;
}

} // namespace

void printUnits(const UnitsRequest& request) {
    units::UnitLocator locator = makeUnitLocator(request.units);
    std::size_t failures = 0;
    std::size_t lost = 0;
    for (const std::string& path : request.files) {
        std::string reason;
        try {
            writeToStandardOutput(modelLines(path, locator, lost));
            continue;
        } catch (const std::system_error& error) {
            reason = inputFailure(path, error).what();
        } catch (const Failure& failure) {
            if (failure.getOutcome() != Outcome::inputNotRead) {
                throw;
            }
            reason = failure.what();
        }
        ++failures;
        printFailure(reason.c_str(), "");
    }
    if (failures > 0) {
        throw Failure(
            request.files.size() == 1 ? Outcome::inputNotRead : Outcome::someFailed,
            std::to_string(failures) + " of " + std::to_string(request.files.size()) + " files are not told of", "");
    }
    if (lost > 0 && request.units.mode == "require") {
        throw Failure(Outcome::unitMissing, std::to_string(lost) + " controlled units are missing",
                      "--path-map and --unit-dir say where to look for them.");
    }
}

} // namespace petal
