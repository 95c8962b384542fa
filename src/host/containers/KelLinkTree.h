#pragma once

#include "host/containers/KelArrayInterface.h"
#include "host/containers/KelRBTree.h"

/// A search tree whose elements are also reached by index in key order, each access in O(log n).
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
