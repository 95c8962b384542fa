#pragma once

#include "layout/NotationTree.h"
#include "petal/Failure.h"
#include "petal/Request.h"
#include "units/UnitLocator.h"
#include "units/UnitTree.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// A model with its diagrams, those that a request asks for.
struct Drawing {
    /// Of `wanted` names, simple or qualified; of all if there is none. Throws as `NotationTree` does.
    Drawing(units::UnitTree found, const std::vector<std::string>& wanted, layout::NotationTree::Lacking lacking);

    units::UnitTree files;
    layout::NotationTree tree;
    std::vector<layout::NodeId> diagrams;
    std::vector<std::string> names; // of files, without ending
};

/// Reads a model, with its units unless the request skips them. Tells of missing units and of damages on standard
/// error, unless the request is quiet. Of several models some may lack the diagrams that are named; a single one must
/// have one. Throws a `Failure`.
[[nodiscard]] std::unique_ptr<Drawing> readDrawing(const std::string& path, const DrawRequest& request,
                                                   units::UnitLocator& locator, bool isSingle);

/// The failure that a request names diagrams which `where`, the subject of a sentence with its verb, does not have.
[[nodiscard]] Failure noDiagramNamed(const std::string& where, const DrawRequest& request);

} // namespace petal
