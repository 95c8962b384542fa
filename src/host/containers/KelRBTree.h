#pragma once

#include "host/containers/KelContainer.h"

/// A balanced search tree ordered by `compare2Object`; elements that compare equal keep the order of adding.
///
/// Adding, finding, removing, and going between a node and its index cost O(log n). Nodes stay where they are
/// in memory until they are removed, so a `Node*` is a handle to its element. An override of a comparison must
/// give the same order for as long as an element is held; an element whose sort value is about to change is
/// taken out with `detachNode` and put back with `attachNode`, neither of which allocates or throws.
class KEL_API KelRBTree : public KelContainer {
public:
    struct Node;
    class Iterator;

    KelRBTree() = default;
    /// Copies the elements in their order, without comparing them. Both trees must sort them alike.
    KelRBTree(const KelRBTree& other);
    KelRBTree& operator=(const KelRBTree& other);
    ~KelRBTree() override;

    void empty() override;
    KelContainer::Iterator* newIterator(bool fromLast) const override;
    void deleteIterator(KelContainer::Iterator* iterator) const override;
    bool add(const void* element, bool allowDuplicates, KelContainer::Iterator* iterator) override;
    bool contains(const void* element, KelContainer::Iterator* iterator) const override;
    const void* findFirst(const void* key, KelContainer::Iterator* iterator) const override;
    bool remove(KelContainer::Iterator* iterator) override;

    /// The element a node holds.
    [[nodiscard]] static const void* element(const Node* node) noexcept;
    [[nodiscard]] Node* firstNode() const noexcept;
    [[nodiscard]] Node* lastNode() const noexcept;
    [[nodiscard]] static Node* nextNode(const Node* node) noexcept;
    [[nodiscard]] static Node* previousNode(const Node* node) noexcept;
    /// The node at `index` in the tree's order, or null.
    [[nodiscard]] Node* getNode(int index) const noexcept;
    /// The index of a node of this tree.
    [[nodiscard]] static int getIndex(const Node* node) noexcept;
    /// The node that holds this very element, or null. Costs O(log n) plus the number of elements that compare
    /// equal to it.
    [[nodiscard]] Node* getNodeOf(const void* element) const;
    /// The first or last node whose element compares equal to `key`, or null.
    [[nodiscard]] Node* findFirstNode(const void* key) const;
    [[nodiscard]] Node* findLastNode(const void* key) const;
    /// The neighbour of `node`, if that compares equal to `key`; else null.
    [[nodiscard]] Node* findNextNode(const void* key, const Node* node) const;
    [[nodiscard]] Node* findPreviousNode(const void* key, const Node* node) const;
    /// Adds an element, equal ones included, and returns its node. Null elements must not be added.
    Node* addNode(const void* element);
    /// Adds an element that belongs behind all others, without comparing it with any, and returns its node.
    Node* addLastNode(const void* element);
    /// Takes the node's element out and destroys the node.
    void removeNode(Node* node) noexcept;
    /// Takes a node out without destroying it; until `attachNode` puts it back the caller owns it.
    void detachNode(Node* node) noexcept;
    /// Puts a detached node back where its element now sorts, after elements that compare equal.
    void attachNode(Node* node);

protected:
    /// The first or last node whose element compares equal to `element` as elements do, or null.
    [[nodiscard]] Node* findFirstEqualNode(const void* element) const;
    [[nodiscard]] Node* findLastEqualNode(const void* element) const;

private:
    /// Whether the tree's order puts `node` right behind the node `held` (null: no); then `next`
    /// becomes the one that follows now.
    bool goesBehind(const Node* held, const Node& node, Node*& next) const;
    Iterator* own(KelContainer::Iterator* iterator) const;

    Node* root_ = nullptr;
    Node* lastAttached_ = nullptr; // or null; what comes in order goes right behind it
};
