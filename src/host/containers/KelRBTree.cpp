#include "host/containers/KelRBTree.h"

#include "host/containers/KelRBTreeBalance.h"
#include "host/containers/KelRBTreeIterator.h"
#include "host/containers/KelRBTreeNode.h"

#include <cassert>
#include <memory>
#include <utility>

namespace {

using Node = KelRBTree::Node;

// `compare` returns the sign of an element compared with the one searched for.
template <typename Compare>
Node* findFirstOf(Node* root, Compare compare) {
    Node* found = nullptr;
    for (Node* node = root; node != nullptr;) {
        const int order = compare(node->element);
        found = order == 0 ? node : found;
        node = order < 0 ? node->right : node->left;
    }
    return found;
}

template <typename Compare>
Node* findLastOf(Node* root, Compare compare) {
    Node* found = nullptr;
    for (Node* node = root; node != nullptr;) {
        const int order = compare(node->element);
        found = order == 0 ? node : found;
        node = order > 0 ? node->left : node->right;
    }
    return found;
}

// Deletes bottom up along the parent pointers, since a deep recursion could exhaust the stack.
void deleteSubtree(Node* top) noexcept {
    Node* const end = top != nullptr ? top->parent : nullptr;
    for (Node* node = top; node != end;) {
        if (node->left != nullptr) {
            node = std::exchange(node->left, nullptr);
        } else if (node->right != nullptr) {
            node = std::exchange(node->right, nullptr);
        } else {
            delete std::exchange(node, node->parent);
        }
    }
}

} // namespace

// The bases must be named to avoid a warning; their only member is the count, which the assignment sets.
// NOLINTNEXTLINE(bugprone-copy-constructor-init,readability-redundant-member-init)
KelRBTree::KelRBTree(const KelRBTree& other) : _KelContainer(), KelContainer() {
    *this = other;
}

KelRBTree& KelRBTree::operator=(const KelRBTree& other) {
    if (this == &other) {
        return *this;
    }
    KelRBTree copy;
    for (const Node* node = other.firstNode(); node != nullptr; node = nextNode(node)) {
        linkNode(copy.root_, copy.lastNode(), false, new Node(node->element));
    }
    std::swap(root_, copy.root_);
    lastAttached_ = nullptr;
    count_ = subtreeSize(root_);
    return *this;
}

KelRBTree::~KelRBTree() {
    deleteSubtree(root_);
}

KelRBTree::Iterator* KelRBTree::own(KelContainer::Iterator* iterator) const {
    const bool mine = iterator != nullptr && iterator->getContainer() == this;
    return mine ? static_cast<Iterator*>(iterator) : nullptr;
}

void KelRBTree::empty() {
    deleteSubtree(std::exchange(root_, nullptr));
    lastAttached_ = nullptr;
    count_ = 0;
}

KelContainer::Iterator* KelRBTree::newIterator(bool fromLast) const {
    return new Iterator(*this, fromLast);
}

void KelRBTree::deleteIterator(KelContainer::Iterator* iterator) const {
    delete iterator;
}

bool KelRBTree::add(const void* element, bool allowDuplicates, KelContainer::Iterator* iterator) {
    if (element == nullptr) {
        return false;
    }
    Node* const present = allowDuplicates ? nullptr : findFirstEqualNode(element);
    Node* const node = present != nullptr ? present : addNode(element);
    if (Iterator* position = own(iterator)) {
        position->moveTo(node);
    }
    return present == nullptr;
}

bool KelRBTree::contains(const void* element, KelContainer::Iterator* iterator) const {
    Node* const node = getNodeOf(element);
    if (Iterator* position = own(iterator); position != nullptr && node != nullptr) {
        position->moveTo(node);
    }
    return node != nullptr;
}

const void* KelRBTree::findFirst(const void* key, KelContainer::Iterator* iterator) const {
    Node* const node = findFirstNode(key);
    if (node == nullptr) {
        return nullptr;
    }
    if (Iterator* position = own(iterator)) {
        position->moveTo(node);
    }
    return node->element;
}

bool KelRBTree::remove(KelContainer::Iterator* iterator) {
    Iterator* const position = own(iterator);
    Node* const node = position != nullptr ? position->getNode() : nullptr;
    if (node == nullptr) {
        return false;
    }
    position->moveTo(nextNode(node));
    removeNode(node);
    return true;
}

const void* KelRBTree::element(const Node* node) noexcept {
    return node->element;
}

Node* KelRBTree::firstNode() const noexcept {
    return leftmost(root_);
}

Node* KelRBTree::lastNode() const noexcept {
    return rightmost(root_);
}

Node* KelRBTree::nextNode(const Node* node) noexcept {
    if (node->right != nullptr) {
        return leftmost(node->right);
    }
    while (node->parent != nullptr && node->parent->right == node) {
        node = node->parent;
    }
    return node->parent;
}

Node* KelRBTree::previousNode(const Node* node) noexcept {
    if (node->left != nullptr) {
        return rightmost(node->left);
    }
    while (node->parent != nullptr && node->parent->left == node) {
        node = node->parent;
    }
    return node->parent;
}

Node* KelRBTree::getNode(int index) const noexcept {
    if (index < 0 || index >= subtreeSize(root_)) {
        return nullptr;
    }
    Node* node = root_;
    for (int before = subtreeSize(node->left); before != index; before = subtreeSize(node->left)) {
        if (index < before) {
            node = node->left;
        } else {
            index -= before + 1;
            node = node->right;
        }
    }
    return node;
}

int KelRBTree::getIndex(const Node* node) noexcept {
    int index = subtreeSize(node->left);
    for (; node->parent != nullptr; node = node->parent) {
        if (node->parent->right == node) {
            index += subtreeSize(node->parent->left) + 1;
        }
    }
    return index;
}

Node* KelRBTree::getNodeOf(const void* element) const {
    if (element == nullptr) {
        return nullptr;
    }
    Node* node = findFirstEqualNode(element);
    while (node != nullptr && node->element != element) {
        node = nextNode(node);
        if (node != nullptr && compare2Object(node->element, element) != 0) {
            return nullptr;
        }
    }
    return node;
}

Node* KelRBTree::findFirstNode(const void* key) const {
    return findFirstOf(root_, [&](const void* element) { return compare2Key(element, key); });
}

Node* KelRBTree::findLastNode(const void* key) const {
    return findLastOf(root_, [&](const void* element) { return compare2Key(element, key); });
}

Node* KelRBTree::findNextNode(const void* key, const Node* node) const {
    Node* const next = nextNode(node);
    return next != nullptr && compare2Key(next->element, key) == 0 ? next : nullptr;
}

Node* KelRBTree::findPreviousNode(const void* key, const Node* node) const {
    Node* const previous = previousNode(node);
    return previous != nullptr && compare2Key(previous->element, key) == 0 ? previous : nullptr;
}

Node* KelRBTree::findFirstEqualNode(const void* element) const {
    return findFirstOf(root_, [&](const void* held) { return compare2Object(held, element); });
}

Node* KelRBTree::findLastEqualNode(const void* element) const {
    return findLastOf(root_, [&](const void* held) { return compare2Object(held, element); });
}

Node* KelRBTree::addNode(const void* element) {
    auto node = std::make_unique<Node>(element);
    attachNode(node.get());
    return node.release();
}

Node* KelRBTree::addLastNode(const void* element) {
    Node* const last = lastAttached_ != nullptr && nextNode(lastAttached_) == nullptr ? lastAttached_ : lastNode();
    assert(last == nullptr || compare2Object(last->element, element) <= 0);
    lastAttached_ = new Node(element);
    linkNode(root_, last, false, lastAttached_);
    count_ = subtreeSize(root_);
    return lastAttached_;
}

void KelRBTree::removeNode(Node* node) noexcept {
    detachNode(node);
    delete node;
}

void KelRBTree::detachNode(Node* node) noexcept {
    lastAttached_ = lastAttached_ == node ? nullptr : lastAttached_;
    unlinkNode(root_, node);
    count_ = subtreeSize(root_);
}

bool KelRBTree::goesBehind(const Node* held, const Node& node, Node*& next) const {
    if (held == nullptr || compare2Object(held->element, node.element) > 0) {
        return false;
    }
    next = nextNode(held);
    return next == nullptr || compare2Object(next->element, node.element) > 0;
}

void KelRBTree::attachNode(Node* node) {
    Node* parent = lastAttached_;
    bool asLeft = false;
    if (Node* next = nullptr; goesBehind(lastAttached_, *node, next)) {
        asLeft = parent->right != nullptr; // then the next one has no left child
        parent = asLeft ? next : parent;
    } else {
        parent = nullptr;
        for (Node* below = root_; below != nullptr; below = asLeft ? below->left : below->right) {
            parent = below;
            asLeft = compare2Object(below->element, node->element) > 0;
        }
    }
    linkNode(root_, parent, asLeft, node);
    lastAttached_ = node;
    count_ = subtreeSize(root_);
}

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
