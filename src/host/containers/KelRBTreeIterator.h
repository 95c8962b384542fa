#pragma once

#include "host/containers/KelRBTree.h"

/// A position in a search tree. Adding elements, and removing others than the one stood at, leave it in place.
/// Copying and assigning copy the position, the container included.
class KEL_API KelRBTree::Iterator final : public KelContainer::Iterator {
public:
    /// Starts at the last element when `fromLast` is set, else at the first; nowhere when there is none.
    Iterator(const KelRBTree& tree, bool fromLast);
    Iterator(const Iterator&) = default;
    Iterator& operator=(const Iterator&) = default;
    ~Iterator() override;

    [[nodiscard]] const KelContainer* getContainer() const override;
    const void* operator*() const override;
    [[nodiscard]] const void* get() const override;
    bool moveToFirst() override;
    bool moveToLast() override;
    /// A single step costs O(1) over a whole walk, a longer one O(log n).
    bool next(int steps) override;
    bool previous(int steps) override;
    bool findFirst(const void* key) override;
    bool findLast(const void* key) override;
    bool findNext(const void* key) override;
    bool findPrevious(const void* key) override;

    /// Goes to `node`, a node of this iterator's tree, or nowhere when it is null.
    bool moveTo(Node* node);
    /// The node stood at, or null when nowhere.
    [[nodiscard]] Node* getNode() const;
    /// The same position in the same container; all positions of a container that are nowhere are the same.
    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

private:
    bool stepBy(long long steps);

    const KelRBTree* tree_;
    Node* node_ = nullptr;
};
