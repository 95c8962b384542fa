#pragma once

#include "host/containers/KelLinkTree.h"

/// Type values in the order of their positions; values of one position in the order of adding. A key is a
/// pointer to an int holding a position.
class KEL_API KelTypeValueByPosition final : public KelLinkTree {
public:
    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};
