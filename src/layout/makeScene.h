#pragma once

#include "layout/Elements.h"
#include "layout/NotationTree.h"
#include "layout/Scene.h"

#include <vector>

namespace layout {

/// The diagrams of a model, in the order of its text: the objects with a list of items of diagrams.
[[nodiscard]] std::vector<NodeId> diagramsOf(const NotationTree& tree);
/// How many objects a diagram's list of items has.
[[nodiscard]] std::size_t itemCount(const NotationTree& tree, NodeId diagram);
/// The names of the packages that an object is in, from the top.
[[nodiscard]] std::vector<std::string> packagesOf(const NotationTree& tree, NodeId object);

/// A diagram as its author laid it out. Time and memory are proportional to the diagram and to the elements it shows.
/// Reads the tree and the elements only, so several threads may use them.
[[nodiscard]] Scene makeScene(const NotationTree& tree, const Elements& elements, NodeId diagram);

} // namespace layout
