#pragma once

#include "host/containers/KelLinkTree.h"

/// A link tree of `KelObject`s in name order, byte for byte. Objects of equal names remain in the order of adding.
///
/// A key is a pointer to a `KelString` with a name. An object may be renamed only while its node is detached
/// (`KelRBTree::detachNode`).
class KEL_API KelNameLinkTree : public KelLinkTree {
public:
    KelNameLinkTree() = default;
    ~KelNameLinkTree() override;

    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};
