#include "host/containers/KelRBTreeIterator.h"

#include "host/containers/KelRBTreeNode.h"

KelRBTree::Iterator::Iterator(const KelRBTree& tree, bool fromLast)
    : tree_(&tree), node_(fromLast ? tree.lastNode() : tree.firstNode()) {}

KelRBTree::Iterator::~Iterator() = default;

const KelContainer* KelRBTree::Iterator::getContainer() const {
    return tree_;
}

const void* KelRBTree::Iterator::operator*() const {
    return get();
}

const void* KelRBTree::Iterator::get() const {
    return node_ != nullptr ? node_->element : nullptr;
}

bool KelRBTree::Iterator::moveToFirst() {
    return moveTo(tree_->firstNode());
}

bool KelRBTree::Iterator::moveToLast() {
    return moveTo(tree_->lastNode());
}

bool KelRBTree::Iterator::next(int steps) {
    return stepBy(steps);
}

bool KelRBTree::Iterator::previous(int steps) {
    return stepBy(-static_cast<long long>(steps));
}

bool KelRBTree::Iterator::stepBy(long long steps) {
    if (node_ == nullptr) {
        return false;
    }
    if (steps == 1) {
        return moveTo(nextNode(node_));
    }
    if (steps == -1) {
        return moveTo(previousNode(node_));
    }
    const long long index = KelRBTree::getIndex(node_) + steps;
    const bool inside = index >= 0 && index < tree_->getCount();
    return moveTo(inside ? tree_->getNode(static_cast<int>(index)) : nullptr);
}

bool KelRBTree::Iterator::findFirst(const void* key) {
    return moveTo(tree_->findFirstNode(key));
}

bool KelRBTree::Iterator::findLast(const void* key) {
    return moveTo(tree_->findLastNode(key));
}

bool KelRBTree::Iterator::findNext(const void* key) {
    if (node_ == nullptr) {
        return false;
    }
    const int order = tree_->compare2Key(node_->element, key);
    return moveTo(order < 0 ? tree_->findFirstNode(key) : tree_->findNextNode(key, node_));
}

bool KelRBTree::Iterator::findPrevious(const void* key) {
    if (node_ == nullptr) {
        return false;
    }
    const int order = tree_->compare2Key(node_->element, key);
    return moveTo(order > 0 ? tree_->findLastNode(key) : tree_->findPreviousNode(key, node_));
}

bool KelRBTree::Iterator::moveTo(Node* node) {
    node_ = node;
    return node_ != nullptr;
}

KelRBTree::Node* KelRBTree::Iterator::getNode() const {
    return node_;
}

bool KelRBTree::Iterator::operator==(const Iterator& other) const {
    return tree_ == other.tree_ && node_ == other.node_;
}

bool KelRBTree::Iterator::operator!=(const Iterator& other) const {
    return !(*this == other);
}
