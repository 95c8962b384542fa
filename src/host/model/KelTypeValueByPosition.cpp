#include "host/model/KelTypeValueByPosition.h"

#include "host/model/KelTypeValue.h"

namespace {

int positionOf(const void* element) {
    return static_cast<const KelTypeValue*>(element)->position;
}

} // namespace

int KelTypeValueByPosition::compare2Object(const void* left, const void* right) const {
    return positionOf(left) - positionOf(right);
}

int KelTypeValueByPosition::compare2Key(const void* element, const void* key) const {
    return positionOf(element) - *static_cast<const int*>(key);
}
