#include "host/containers/KelContainer.h"

#include "host/containers/KelArrayInterface.h"

#include <functional>

namespace {

// Only the sign of the difference, which may not fit into an int.
int compareAddresses(const void* left, const void* right) {
    const std::less<> before;
    return static_cast<int>(before(right, left)) - static_cast<int>(before(left, right));
}

} // namespace

_KelContainer::~_KelContainer() = default;

KelContainer::~KelContainer() = default;

int KelContainer::compare2Object(const void* left, const void* right) const {
    return compareAddresses(left, right);
}

int KelContainer::compare2Key(const void* element, const void* key) const {
    return compareAddresses(element, key);
}

KelContainer::Iterator::~Iterator() = default;

KelArrayInterface::~KelArrayInterface() = default;
