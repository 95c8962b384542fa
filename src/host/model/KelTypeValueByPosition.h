#pragma once

#include "host/containers/KelLinkTree.h"

/// Type values in the order of `KelTypeValue::position`; values of the same position are in the order of adding.
///
/// Does not own them. A key is a pointer to an `int` that holds a position. A position must not change while its value
/// is in the tree.
class KEL_API KelTypeValueByPosition final : public KelLinkTree {
public:
    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};
