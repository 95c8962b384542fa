#pragma once

#include "host/containers/KelContainer.h"

/// A balanced search tree in the order of `compare2Object`. Elements that compare equal keep the order of adding.
///
/// The tree owns its nodes, which do not move in memory; a `Node*` is a handle to its element until the node is
/// removed. A comparison must give the same order as long as an element is held. To change the sort value of an
/// element, detach its node before and attach it again after the change; neither allocates or throws. KelContainer.h
/// has the rules for errors and threads. Adding, searching, removing, and converting between a node and its index cost
/// O(log n).
class KEL_API KelRBTree : public KelContainer {
public:
    struct Node;
    class Iterator;

    KelRBTree() = default;
    /// Copies the pointers in their order, without comparing them. Precondition: both trees sort alike.
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

    /// The element of a node.
    [[nodiscard]] static const void* element(const Node* node) noexcept;
    /// The ends of the tree's order, and the neighbours of a node in it; null when there is none.
    [[nodiscard]] Node* firstNode() const noexcept;
    [[nodiscard]] Node* lastNode() const noexcept;
    [[nodiscard]] static Node* nextNode(const Node* node) noexcept;
    [[nodiscard]] static Node* previousNode(const Node* node) noexcept;
    /// The node at `index` in the tree's order, or null when there is none.
    [[nodiscard]] Node* getNode(int index) const noexcept;
    /// The index of a node in its tree.
    [[nodiscard]] static int getIndex(const Node* node) noexcept;
    /// The node of this element (not of one that compares equal), or null. Costs O(log n) plus the number of elements
    /// that compare equal to it.
    [[nodiscard]] Node* getNodeOf(const void* element) const;
    /// The first or last node whose element compares equal to `key`, or null.
    [[nodiscard]] Node* findFirstNode(const void* key) const;
    [[nodiscard]] Node* findLastNode(const void* key) const;
    /// The next or previous node, if its element compares equal to `key`; else null.
    [[nodiscard]] Node* findNextNode(const void* key, const Node* node) const;
    [[nodiscard]] Node* findPreviousNode(const void* key, const Node* node) const;
    /// Adds an element, also a duplicate, and returns its node. Precondition: it is not null.
    Node* addNode(const void* element);
    /// The same without comparing. Precondition: the element sorts after all others, or equal to the last.
    Node* addLastNode(const void* element);
    /// Removes the element and destroys its node.
    void removeNode(Node* node) noexcept;
    /// Removes a node without destroying it. The caller owns it until `attachNode`.
    void detachNode(Node* node) noexcept;
    /// Inserts a detached node at the current position of its element, after elements that compare equal.
    void attachNode(Node* node);

protected:
    /// The first or last node whose element compares equal to `element` (`compare2Object`), or null.
    [[nodiscard]] Node* findFirstEqualNode(const void* element) const;
    [[nodiscard]] Node* findLastEqualNode(const void* element) const;

private:
    /// Whether `node` sorts directly after the node `held` (null: no). `next` then is the node that follows `held` now.
    bool goesBehind(const Node* held, const Node& node, Node*& next) const;
    Iterator* own(KelContainer::Iterator* iterator) const;

    Node* root_ = nullptr;
    Node* lastAttached_ = nullptr; // or null; elements that arrive in order are attached after it without a search
};
