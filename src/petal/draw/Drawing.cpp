#include "petal/draw/Drawing.h"

#include "layout/makeScene.h"
#include "petal/draw/pictureNames.h"
#include "petal/output/fileFailure.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitTrees.h"
#include "text/escape.h"
#include "units/LostUnits.h"

#include <algorithm>
#include <cstdio>
#include <system_error>
#include <utility>

namespace petal {

using layout::NodeId;
using layout::NotationTree;

Drawing::Drawing(units::UnitTree found, const std::vector<std::string>& wanted, NotationTree::Lacking lacking)
    : files(std::move(found)), tree(files, lacking), diagrams(layout::diagramsOf(tree)),
      names(pictureNames(tree, diagrams)) { // of all: each has the same name whatever is drawn with it
    if (wanted.empty()) {
        return;
    }
    std::size_t kept = 0;
    for (std::size_t index = 0; index < diagrams.size(); ++index) {
        const std::string qualified = qualifiedName(tree, diagrams[index]);
        if (std::ranges::any_of(wanted, [&](const std::string& name) {
                return name == tree[diagrams[index]].name() || name == qualified;
            })) {
            diagrams[kept] = diagrams[index];
            std::swap(names[kept++], names[index]);
        }
    }
    diagrams.resize(kept);
    names.resize(kept);
}

namespace {

/// Reports missing units: the causes, or of one of many models their number. Throws a `Failure` when they are required.
void checkUnits(const std::string& path, const units::UnitTree& files, const DrawRequest& request,
                const units::UnitLocator& locator, bool isSingle) {
    const units::ModelLosses losses = units::lossesOf(files, locator.getSymbols());
    const std::uint64_t count = losses.units.size() + losses.untold;
    if (count > 0 && request.units.mode == "require") {
        throw Failure(Outcome::unitMissing, "controlled units of '" + path + "' are missing",
                      "--path-map and --unit-dir say where to look for them.");
    }
    if (count > 0 && !request.quiet) {
        units::LostUnits lost;
        lost.add(losses);
        const std::string number = text::printableText(path) + ": missing controlled units: " + std::to_string(count);
        std::fputs(asNotes(isSingle ? lossLines(lost) : TextLines{number}).c_str(), stderr);
    }
}

/// Reports that the notation of a model or a unit was repaired: pictures may lack what was damaged.
void tellDamages(const Drawing& drawing) {
    const layout::Damages& damages = drawing.tree.getDamages();
    if (damages.count > 0) {
        const std::string line = "petal: " + text::printableText(drawing.files.files[damages.file].path.string()) +
                                 ": damages: " + std::to_string(damages.count) + "; " + damages.first + "\n";
        std::fputs(line.c_str(), stderr);
    }
}

/// The files of most models refer to no unit. That shows while the tree is made of the model's own.
std::unique_ptr<Drawing> read(const std::string& path, const DrawRequest& request, units::UnitLocator& locator,
                              bool isSingle) {
    const bool skipsUnits = request.units.mode == "skip";
    try {
        return std::make_unique<Drawing>(readModelAlone(path), request.diagrams,
                                         skipsUnits ? NotationTree::Lacking::isEmpty
                                                    : NotationTree::Lacking::isRefused);
    } catch (const NotationTree::LacksUnit&) {
        units::UnitTree files = readModelTree(path, locator);
        checkUnits(path, files, request, locator, isSingle);
        return std::make_unique<Drawing>(std::move(files), request.diagrams, NotationTree::Lacking::isEmpty);
    }
}

} // namespace

std::unique_ptr<Drawing> readDrawing(const std::string& path, const DrawRequest& request, units::UnitLocator& locator,
                                     bool isSingle) {
    try {
        std::unique_ptr<Drawing> drawing = read(path, request, locator, isSingle);
        if (!request.quiet) {
            tellDamages(*drawing);
        }
        if (isSingle && drawing->diagrams.empty() && !request.diagrams.empty()) {
            throw noDiagramNamed("'" + path + "' has", request);
        }
        return drawing;
    } catch (const std::system_error& error) {
        throw inputFailure(path, error);
    }
}

Failure noDiagramNamed(const std::string& where, const DrawRequest& request) {
    return {Outcome::inputNotRead, where + " no diagram named '" + request.diagrams.front() + "'",
            "'petal draw --list' prints the diagrams."};
}

} // namespace petal
