#include "builder/placeAttribute.h"

#include "builder/Unattached.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"

namespace rose {

KelAttribute* placeAttribute(KelAttribute& attribute, KelClass& owner) {
    if (owner.addAttribute(&attribute)) {
        forgetUnattached(attribute);
        attribute.position = static_cast<std::int16_t>(owner.getAttributeCount() - 1);
        return &attribute;
    }
    KelAttribute* standIn = owner.getAttribute(attribute.getName(), nullptr);
    if (standIn == nullptr || standIn == &attribute) {
        return &attribute; // refused for having a class already
    }
    trace::replaced(attribute, KelImportReason::nameTaken, *standIn);
    delete &attribute;
    return standIn;
}

} // namespace rose
