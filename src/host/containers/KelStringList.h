#pragma once

#include "host/containers/KelOrderedVector.h"

/// A list of texts: its elements are pointers to `KelString`, which it does not own. Elements and keys (also
/// pointers to `KelString`) are compared by their texts, byte for byte up to the first NUL.
class KEL_API KelStringList : public KelOrderedVector {
public:
    KelStringList() = default;
    KelStringList(const KelStringList&) = default;
    KelStringList& operator=(const KelStringList&) = default;
    ~KelStringList() override;

    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};
