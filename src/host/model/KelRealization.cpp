#include "host/model/KelRealization.h"

#include "host/model/KelClass.h"
#include "host/model/links/KelRelations.h"

KelRealization::KelRealization() : KelRelationship(KelElementType::realization) {}

KelRealization::~KelRealization() {
    dissolve();
}

bool KelRealization::addRealizationClass(KelClass* object) {
    return KelRelations::realizationClass.set(this, object);
}

KelClass* KelRealization::getRealizationClass() const {
    return static_cast<KelClass*>(realizationClass_.get());
}

bool KelRealization::addSpecificationClass(KelClass* object) {
    return KelRelations::specificationClass.set(this, object);
}

KelClass* KelRealization::getSpecificationClass() const {
    return static_cast<KelClass*>(specificationClass_.get());
}
