#pragma once

#include "host/containers/KelOrderedVector.h"

/// An ordered vector of texts. Elements and keys are pointers to `KelString`, which the list does not own; they are
/// compared byte for byte up to the first NUL.
class KEL_API KelStringList : public KelOrderedVector {
public:
    KelStringList() = default;
    KelStringList(const KelStringList&) = default;
    KelStringList& operator=(const KelStringList&) = default;
    ~KelStringList() override;

    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};
