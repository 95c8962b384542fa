#pragma once

#include "host/containers/KelRBTree.h"

/// A position in a search tree. Adding elements and removing other elements leave it where it is. A copy has the same
/// position in the same tree. Searches cost O(log n).
class KEL_API KelRBTree::Iterator final : public KelContainer::Iterator {
public:
    /// Starts at the last element or at the first; at none in an empty tree.
    Iterator(const KelRBTree& tree, bool fromLast);
    Iterator(const Iterator&) = default;
    Iterator& operator=(const Iterator&) = default;
    ~Iterator() override;

    [[nodiscard]] const KelContainer* getContainer() const override;
    const void* operator*() const override;
    [[nodiscard]] const void* get() const override;
    bool moveToFirst() override;
    bool moveToLast() override;
    /// A single step costs O(1) on average over a whole walk, a longer one O(log n).
    bool next(int steps) override;
    bool previous(int steps) override;
    bool findFirst(const void* key) override;
    bool findLast(const void* key) override;
    bool findNext(const void* key) override;
    bool findPrevious(const void* key) override;

    /// Moves to `node`, a node of this iterator's tree, or to no element when it is null.
    bool moveTo(Node* node);
    /// The node, or null when the iterator is at no element.
    [[nodiscard]] Node* getNode() const;
    /// Whether both are at the same position of the same tree; two that are at no element are equal.
    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

private:
    bool stepBy(long long steps);

    const KelRBTree* tree_;
    Node* node_ = nullptr;
};
