#include "completion/ValidateGeneralization.h"

#include "builder/ClassLookup.h"
#include "host/model/KelClass.h"
#include "host/model/KelGeneralization.h"

namespace rose {

namespace {

bool isValid(const KelGeneralization& generalization) {
    const KelClass* supertype = generalization.supertypeClasses().first();
    bool valid = supertype != nullptr && !generalization.subtypeClasses().isEmpty();
    // A lookup may take a class out of the waiting list, so each is made whatever the others gave.
    if (supertype != nullptr && findAClass(supertype->getName().text(), 1) == nullptr) {
        valid = false;
    }
    for (const KelClass* subtype : generalization.subtypeClasses()) {
        if (findAClass(subtype->getName().text(), 0) == nullptr) {
            valid = false;
        }
    }
    return valid;
}

} // namespace

bool ValidateGeneralization(KelGeneralization* generalization, KelDiagram* /*diagram*/) {
    if (isValid(*generalization)) {
        return false;
    }
    delete generalization;
    return true;
}

} // namespace rose
