#pragma once

#include "host/containers/KelVector.h"

/// A vector whose order its user chooses: elements may be put in anywhere, and taking one out keeps the order of
/// the others. Both cost as many steps as elements stand behind the place.
class KEL_API KelOrderedVector : public KelVector {
public:
    KelOrderedVector() = default;
    KelOrderedVector(const KelOrderedVector&) = default;
    KelOrderedVector& operator=(const KelOrderedVector&) = default;
    ~KelOrderedVector() override;

    bool remove(KelContainer::Iterator* iterator) override;
    /// Puts `element` in front of the one at `index`, or at the end when `index` is the number of elements. False
    /// for a null element and for any other index.
    virtual bool insertElement(const void* element, int index);
};
