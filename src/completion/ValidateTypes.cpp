#include "completion/ValidateTypes.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

namespace rose {

namespace {

template <class Typed>
void typeAll(const KelLinks<Typed>& objects) {
    for (Typed* object : objects) {
        if (object->getType() == nullptr) {
            object->addType(state.aBaseType);
            trace::repaired(*object, KelImportReason::typeDefaulted, state.aBaseType);
        }
    }
}

} // namespace

void ValidateTypes(KelClass* validated) {
    typeAll(validated->attributes());
    typeAll(validated->arguments());
    for (KelOperation* operation : validated->operations()) {
        typeAll(operation->arguments());
        if (operation->getReturnType() == nullptr) {
            operation->addReturnType(state.aBaseType);
            trace::repaired(*operation, KelImportReason::typeDefaulted, state.aBaseType);
        }
    }
}

} // namespace rose
