#include "types/moveAttributes.h"

#include "host/model/KelAttribute.h"
#include "host/model/KelType.h"
#include "types/ReferenceCounts.h"

namespace rose {

KelAttribute* takeFirstAttribute(KelType& from) {
    auto* attribute = static_cast<KelAttribute*>(from.features().first());
    const unsigned int links = AttributeIsReferenced(*attribute);
    from.removeFeature(0);
    return links - 1 > 0 ? attribute : nullptr;
}

} // namespace rose
