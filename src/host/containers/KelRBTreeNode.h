#pragma once

#include "host/containers/KelRBTree.h"

/// A node of a search tree, which owns it. Only the tree changes it. From the sizes of the subtrees an index is found
/// on the path down, or up.
struct KelRBTree::Node {
    explicit Node(const void* content) : element(content) {}

    const void* element;
    Node* parent = nullptr;
    Node* left = nullptr;
    Node* right = nullptr;
    int size = 1; // of the subtree, this node included
    bool red = true;
};

[[nodiscard]] inline int subtreeSize(const KelRBTree::Node* node) noexcept {
    return node != nullptr ? node->size : 0;
}

[[nodiscard]] inline KelRBTree::Node* leftmost(KelRBTree::Node* node) noexcept {
    while (node != nullptr && node->left != nullptr) {
        node = node->left;
    }
    return node;
}

[[nodiscard]] inline KelRBTree::Node* rightmost(KelRBTree::Node* node) noexcept {
    while (node != nullptr && node->right != nullptr) {
        node = node->right;
    }
    return node;
}
