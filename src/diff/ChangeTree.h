#pragma once

#include "diff/changes.h"

#include <cstddef>
#include <span>
#include <vector>

namespace diff {

/// An element of two models as one: the new element of a pair, an added one, or a removed one.
struct TreeNode {
    ElementId oldId = noElement;
    ElementId newId = noElement;
    std::size_t depth = 0;           ///< 0 for the model
    std::span<const Change> changes; ///< of the element itself
};

/// The elements that have changed, and their owners up to the model, each after its owner; within an owner those that
/// were removed come first, and types last. `changes` are those of the difference, or some of them, in any order; those
/// of drawings are left out. The nodes refer to `sorted`, which takes the changes in the order of the nodes.
[[nodiscard]] std::vector<TreeNode> changeTree(const Difference& difference, std::span<const Change> changes,
                                               std::vector<Change>& sorted);

/// The changes in the order of the tree.
[[nodiscard]] std::vector<Change> inTreeOrder(const Difference& difference, std::span<const Change> changes);

} // namespace diff
