#pragma once

#include "host/containers/KelRBTree.h"

/// Red-black trees: no red node has a red child, and every way from the root to a missing child passes as many
/// black nodes. Both operations keep that and the subtree sizes, in O(log n), and keep all nodes where they are.

/// Hangs `node` below `parent` (null: it becomes the root) on the given side, where nothing hangs yet. The node's
/// former place in a tree is forgotten.
void linkNode(KelRBTree::Node*& root, KelRBTree::Node* parent, bool asLeft, KelRBTree::Node* node) noexcept;
/// Takes `node` out of the tree.
void unlinkNode(KelRBTree::Node*& root, KelRBTree::Node* node) noexcept;
