#pragma once

#include "host/containers/KelRBTree.h"

/// The red-black invariants: no red node has a red child, and each path from the root to a missing child has the same
/// number of black nodes. Both operations preserve them and the subtree sizes, in O(log n), and move no node in memory.

/// Makes `node` the left or right child of `parent`, or the root when `parent` is null. Precondition: that place is
/// empty. The node's earlier links are overwritten.
void linkNode(KelRBTree::Node*& root, KelRBTree::Node* parent, bool asLeft, KelRBTree::Node* node) noexcept;
/// Removes `node` from the tree.
void unlinkNode(KelRBTree::Node*& root, KelRBTree::Node* node) noexcept;
