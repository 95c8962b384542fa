#pragma once

#include "host/containers/KelLinkTree.h"

/// A link tree of `KelObject`s ordered by name, byte for byte; equal names stay in the order of adding.
///
/// A key is a pointer to a `KelString` holding a name. An object must not be renamed while it is held, unless
/// its node is detached first.
class KEL_API KelNameLinkTree : public KelLinkTree {
public:
    KelNameLinkTree() = default;
    ~KelNameLinkTree() override;

    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};
