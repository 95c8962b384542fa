#include "host/containers/KelRBTreeBalance.h"

#include "host/containers/KelRBTreeNode.h"

namespace {

using Node = KelRBTree::Node;

// A missing child counts as black.
bool isRed(const Node* node) {
    return node != nullptr && node->red;
}

// Mirrored cases are one case here, with the side as a parameter.
Node*& child(Node* node, bool left) {
    return left ? node->left : node->right;
}

void replaceInParent(Node*& root, const Node* node, Node* replacement) {
    Node* parent = node->parent;
    if (parent == nullptr) {
        root = replacement;
    } else {
        child(parent, parent->left == node) = replacement;
    }
    if (replacement != nullptr) {
        replacement->parent = parent;
    }
}

// Moves the child on the other side up to the node's position, and the node down to the side `toLeft`.
void rotate(Node*& root, Node* node, bool toLeft) {
    Node* raised = child(node, !toLeft);
    Node* moved = child(raised, toLeft);
    replaceInParent(root, node, raised);
    child(raised, toLeft) = node;
    node->parent = raised;
    child(node, !toLeft) = moved;
    if (moved != nullptr) {
        moved->parent = node;
    }
    raised->size = node->size;
    node->size = 1 + subtreeSize(node->left) + subtreeSize(node->right);
}

void addToSizes(Node* from, int difference) {
    for (Node* node = from; node != nullptr; node = node->parent) {
        node->size += difference;
    }
}

void repairAfterLink(Node*& root, Node* node) {
    while (isRed(node->parent)) {
        Node* parent = node->parent;
        Node* grandparent = parent->parent; // not null, since the root is black
        const bool onLeft = grandparent->left == parent;
        Node* uncle = child(grandparent, !onLeft);
        if (isRed(uncle)) {
            parent->red = false;
            uncle->red = false;
            grandparent->red = true;
            node = grandparent;
            continue;
        }
        if (child(parent, !onLeft) == node) {
            rotate(root, parent, onLeft);
            parent = node;
        }
        parent->red = false;
        grandparent->red = true;
        rotate(root, grandparent, !onLeft);
        break;
    }
    root->red = false;
}

// Precondition: the paths through `node`, a child of `parent` that may be missing, have one black node too few.
void repairAfterUnlink(Node*& root, Node* node, Node* parent) {
    while (parent != nullptr && !isRed(node)) {
        const bool onLeft = parent->left == node;
        Node* sibling = child(parent, !onLeft); // not null, since its side has more black nodes
        if (sibling->red) {
            sibling->red = false;
            parent->red = true;
            rotate(root, parent, onLeft);
            sibling = child(parent, !onLeft);
        }
        if (!isRed(sibling->left) && !isRed(sibling->right)) {
            sibling->red = true;
            node = parent;
            parent = node->parent;
            continue;
        }
        if (!isRed(child(sibling, !onLeft))) {
            rotate(root, sibling, !onLeft); // both are coloured below
            sibling = child(parent, !onLeft);
        }
        sibling->red = parent->red;
        parent->red = false;
        child(sibling, !onLeft)->red = false;
        rotate(root, parent, onLeft);
        return;
    }
    if (node != nullptr) {
        node->red = false;
    }
}

} // namespace

void linkNode(Node*& root, Node* parent, bool asLeft, Node* node) noexcept {
    node->parent = parent;
    node->left = nullptr;
    node->right = nullptr;
    node->size = 1;
    node->red = true;
    if (parent == nullptr) {
        root = node;
    } else {
        child(parent, asLeft) = node;
    }
    addToSizes(parent, 1);
    repairAfterLink(root, node);
}

void unlinkNode(Node*& root, Node* node) noexcept {
    Node* raised = nullptr; // the node that fills the gap, below `raisedParent`
    Node* raisedParent = nullptr;
    bool tookRed = false;
    if (node->left == nullptr || node->right == nullptr) {
        raised = node->left != nullptr ? node->left : node->right;
        raisedParent = node->parent;
        tookRed = node->red;
        addToSizes(raisedParent, -1);
        replaceInParent(root, node, raised);
    } else {
        Node* successor = leftmost(node->right);
        raised = successor->right;
        raisedParent = successor->parent == node ? successor : successor->parent;
        tookRed = successor->red;
        addToSizes(successor->parent, -1);
        if (successor->parent != node) {
            replaceInParent(root, successor, raised);
            successor->right = node->right;
            successor->right->parent = successor;
        }
        replaceInParent(root, node, successor);
        successor->left = node->left;
        successor->left->parent = successor;
        successor->red = node->red;
        successor->size = node->size;
    }
    if (!tookRed) {
        repairAfterUnlink(root, raised, raisedParent);
    }
}
