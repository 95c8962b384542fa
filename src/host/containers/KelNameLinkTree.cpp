#include "host/containers/KelNameLinkTree.h"

#include "host/model/KelObject.h"

KelNameLinkTree::~KelNameLinkTree() = default;

int KelNameLinkTree::compare2Object(const void* left, const void* right) const {
    return compare2Key(left, &static_cast<const KelObject*>(right)->getName());
}

int KelNameLinkTree::compare2Key(const void* element, const void* key) const {
    return static_cast<const KelObject*>(element)->getName().view().compare(static_cast<const KelString*>(key)->view());
}
