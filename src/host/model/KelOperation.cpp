#include "host/model/KelOperation.h"

#include "host/model/KelArgument.h"
#include "host/model/KelClass.h"
#include "host/model/KelType.h"
#include "host/model/links/KelRelations.h"

KelOperation::KelOperation() : KelModelObject(KelElementType::operation) {}

KelOperation::~KelOperation() {
    dissolve();
}

KelClass* KelOperation::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}

bool KelOperation::addArgument(KelArgument* object) {
    return KelRelations::operationArguments.link(this, object);
}

bool KelOperation::addReturnType(KelType* object) {
    return KelRelations::returnType.set(this, object);
}

KelType* KelOperation::getReturnType() const {
    return static_cast<KelType*>(returnType_.get());
}
