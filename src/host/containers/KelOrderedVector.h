#pragma once

#include "host/containers/KelVector.h"

/// A vector in which elements can be inserted at any index; removing keeps the order of the others. Both cost time
/// proportional to the number of elements after the index.
class KEL_API KelOrderedVector : public KelVector {
public:
    KelOrderedVector() = default;
    KelOrderedVector(const KelOrderedVector&) = default;
    KelOrderedVector& operator=(const KelOrderedVector&) = default;
    ~KelOrderedVector() override;

    bool remove(KelContainer::Iterator* iterator) override;
    /// Inserts `element` before the one at `index`, or at the end when `index` is the number of elements. False for any
    /// other index and for null.
    virtual bool insertElement(const void* element, int index);
};
