#pragma once

#include "host/containers/KelContainer.h"

/// A container whose elements are reached by index, from 0 to the element count minus 1.
class KEL_API KelArrayInterface : public virtual _KelContainer {
public:
    KelArrayInterface() = default;
    KelArrayInterface(const KelArrayInterface&) = default;
    KelArrayInterface& operator=(const KelArrayInterface&) = default;
    ~KelArrayInterface() override;

    /// Adds an element at the place the container's order gives it; false when it was refused, as
    /// `KelContainer::add` refuses.
    virtual bool addElement(const void* element, bool allowDuplicates) = 0;
    /// Whether this very pointer is held.
    virtual bool containsElement(const void* element) const = 0;
    /// The element at `index`, or null when there is none.
    virtual const void* operator[](int index) const = 0;
    /// The index of the first or last element that compares equal to `element`, or -1.
    virtual int findFirstElement(const void* element) const = 0;
    virtual int findLastElement(const void* element) const = 0;
    /// The same among the elements after, or before, the one at `index`.
    virtual int findNextElement(const void* element, int index) const = 0;
    virtual int findPreviousElement(const void* element, int index) const = 0;
    /// Takes out the element at `index`; false when there is none.
    virtual bool removeElement(int index) = 0;
};
