#pragma once

#include "layout/makeScene.h"

#include <string>
#include <vector>

namespace petal {

/// The names of the files of diagrams, without ending: below folders of the names of their packages, all characters
/// that file systems refuse replaced, each name once, case ignored. In the order of the diagrams; the time is
/// proportional to the names.
[[nodiscard]] std::vector<std::string> pictureNames(const layout::NotationTree& tree,
                                                    const std::vector<layout::NodeId>& diagrams);

/// The names of a diagram's packages and its own, joined with "::".
[[nodiscard]] std::string qualifiedName(const layout::NotationTree& tree, layout::NodeId diagram);

} // namespace petal
