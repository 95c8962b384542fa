#include "host/model/KelArgument.h"

#include "host/model/KelClass.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "host/model/links/KelRelations.h"

KelArgument::KelArgument() : KelModelObject(KelElementType::argument) {}

KelArgument::~KelArgument() {
    dissolve();
}

KelOperation* KelArgument::getOperation() const {
    return static_cast<KelOperation*>(operation_.get());
}

KelClass* KelArgument::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}

bool KelArgument::addType(KelType* object) {
    return KelRelations::argumentType.set(this, object);
}

KelType* KelArgument::getType() const {
    return static_cast<KelType*>(type_.get());
}
