#include "host/model/KelDependency.h"

#include "host/model/KelClass.h"
#include "host/model/links/KelRelations.h"

KelDependency::KelDependency() : KelRelationship(KelElementType::dependency) {}

KelDependency::~KelDependency() {
    dissolve();
}

bool KelDependency::addClientClass(KelClass* object) {
    return KelRelations::clientClass.set(this, object);
}

KelClass* KelDependency::getClientClass() const {
    return static_cast<KelClass*>(clientClass_.get());
}

bool KelDependency::addSupplierClass(KelClass* object) {
    return KelRelations::supplierClass.set(this, object);
}

KelClass* KelDependency::getSupplierClass() const {
    return static_cast<KelClass*>(supplierClass_.get());
}
