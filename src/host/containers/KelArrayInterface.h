#pragma once

#include "host/containers/KelContainer.h"

/// A container with access by index, from 0 to `getCount() - 1`. Any other index is allowed and finds nothing. Cost and
/// order are those of the container.
class KEL_API KelArrayInterface : public virtual _KelContainer {
public:
    KelArrayInterface() = default;
    KelArrayInterface(const KelArrayInterface&) = default;
    KelArrayInterface& operator=(const KelArrayInterface&) = default;
    ~KelArrayInterface() override;

    /// Adds an element at its position in the container's order. False when it is refused, as by `KelContainer::add`.
    virtual bool addElement(const void* element, bool allowDuplicates) = 0;
    /// Whether this pointer is held.
    virtual bool containsElement(const void* element) const = 0;
    /// The element at `index`, or null when there is none.
    virtual const void* operator[](int index) const = 0;
    /// The index of the first or last element that compares equal to `element`, or -1.
    virtual int findFirstElement(const void* element) const = 0;
    virtual int findLastElement(const void* element) const = 0;
    /// The same among the elements after, or before, the one at `index`.
    virtual int findNextElement(const void* element, int index) const = 0;
    virtual int findPreviousElement(const void* element, int index) const = 0;
    /// Removes the element at `index`; false when there is none.
    virtual bool removeElement(int index) = 0;
};
