#pragma once

#include "host/containers/KelArrayInterface.h"

#include <vector>

/// An array of elements in the order of adding. KelContainer.h has the rules for ownership, errors and threads.
///
/// Access by index and adding with duplicates allowed cost O(1); searching, removing and adding without duplicates cost
/// O(n). An iterator is an index: after the removal of an earlier element it is at the element that followed.
class KEL_API KelVector : public KelContainer, public KelArrayInterface {
public:
    class Iterator;

    KelVector() = default;
    KelVector(const KelVector&) = default;
    KelVector& operator=(const KelVector& other);
    ~KelVector() override;

    void empty() override;
    KelContainer::Iterator* newIterator(bool fromLast) const override;
    void deleteIterator(KelContainer::Iterator* iterator) const override;
    bool add(const void* element, bool allowDuplicates, KelContainer::Iterator* iterator) override;
    bool contains(const void* element, KelContainer::Iterator* iterator) const override;
    const void* findFirst(const void* key, KelContainer::Iterator* iterator) const override;
    bool remove(KelContainer::Iterator* iterator) override;

    bool addElement(const void* element, bool allowDuplicates) override;
    bool containsElement(const void* element) const override;
    const void* operator[](int index) const override;
    int findFirstElement(const void* element) const override;
    int findLastElement(const void* element) const override;
    int findNextElement(const void* element, int index) const override;
    int findPreviousElement(const void* element, int index) const override;
    bool removeElement(int index) override;

    /// Whether both hold the same pointers in the same order.
    bool operator==(const KelVector& other) const;
    bool operator!=(const KelVector& other) const;

protected:
    std::vector<const void*> elements_; // as many as count_ says

private:
    Iterator* own(KelContainer::Iterator* iterator) const;
};
