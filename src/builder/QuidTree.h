#pragma once

#include "host/containers/KelLinkTree.h"

namespace rose {

/// Association placeholders ordered by quid; an association without one is ordered by its name.
///
/// Elements are `KelAssociation`s, which the tree does not own. A key is a pointer to a `KelString` holding a quid.
class QuidTree final : public KelLinkTree {
public:
    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};

} // namespace rose
