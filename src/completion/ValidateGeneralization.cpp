#include "completion/ValidateGeneralization.h"

#include "builder/ClassLookup.h"
#include "builder/Trace.h"
#include "host/model/KelClass.h"
#include "host/model/KelGeneralization.h"

namespace rose {

namespace {

/// Why the generalization is invalid; `none` when it is valid.
KelImportReason faultOf(const KelGeneralization& generalization) {
    const KelClass* supertype = generalization.supertypeClasses().first();
    KelImportReason fault = KelImportReason::none;
    if (supertype == nullptr || generalization.subtypeClasses().isEmpty()) {
        fault = supertype == nullptr ? KelImportReason::noSupplier : KelImportReason::noClass;
    }
    // A lookup may take a class out of the waiting list, so each is made whatever the others gave.
    if (supertype != nullptr && findAClass(supertype->getName().text(), 1) == nullptr) {
        fault = KelImportReason::supplierUnknown;
    }
    for (const KelClass* subtype : generalization.subtypeClasses()) {
        if (findAClass(subtype->getName().text(), 0) == nullptr) {
            fault = KelImportReason::noClass;
        }
    }
    return fault;
}

} // namespace

bool ValidateGeneralization(KelGeneralization* generalization, KelDiagram* /*diagram*/) {
    const KelImportReason fault = faultOf(*generalization);
    if (fault == KelImportReason::none) {
        return false;
    }
    trace::removing(*generalization, fault);
    delete generalization;
    return true;
}

} // namespace rose
