#include "host/model/KelGeneralization.h"

#include "host/model/KelClass.h"
#include "host/model/links/KelRelations.h"

KelGeneralization::KelGeneralization() : KelRelationship(KelElementType::generalization) {}

KelGeneralization::~KelGeneralization() {
    dissolve();
}

bool KelGeneralization::addSubtypeClass(KelClass* object) {
    return KelRelations::subtypeClasses.link(this, object);
}

bool KelGeneralization::addSupertypeClass(KelClass* object) {
    return KelRelations::supertypeClasses.link(this, object);
}
