#pragma once

#include "host/containers/KelArrayInterface.h"
#include "host/containers/KelRBTree.h"

/// A search tree with access by index, in the tree's order. Each operation costs O(log n); a search for a
/// pointer also takes one step per element that compares equal.
class KEL_API KelLinkTree : public KelRBTree, public KelArrayInterface {
public:
    KelLinkTree() = default;
    ~KelLinkTree() override;

    bool addElement(const void* element, bool allowDuplicates) override;
    bool containsElement(const void* element) const override;
    const void* operator[](int index) const override;
    int findFirstElement(const void* element) const override;
    int findLastElement(const void* element) const override;
    int findNextElement(const void* element, int index) const override;
    int findPreviousElement(const void* element, int index) const override;
    bool removeElement(int index) override;
};
