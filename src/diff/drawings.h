#pragma once

#include "diff/changes.h"
#include "layout/NotationTree.h"

#include <string>
#include <vector>

namespace diff {

/// A model's files, with the diagrams of all kinds.
struct Drawings {
    const layout::NotationTree& tree;
    std::string file; ///< the model's own, as it was named
};

/// What is drawn differently in diagrams that both models have: places, sizes, colours, fonts and flags of their views.
/// Diagrams are the same by quid, else by kind and qualified name; their views by kind, element and name, several of
/// one by their order. Diagrams of only one model are left out. Time and memory are proportional to the files.
[[nodiscard]] std::vector<LayoutChange> compareDrawings(const Drawings& olds, const Drawings& news);

} // namespace diff
