#include "host/model/KelAttribute.h"

#include "host/model/KelClass.h"
#include "host/model/KelKey.h"
#include "host/model/links/KelRelations.h"

KelAttribute::KelAttribute() : KelStructuralFeature(KelElementType::attribute) {}

KelAttribute::KelAttribute(const KelAttribute& other) : KelAttribute() {
    setFrom(other);
}

KelAttribute& KelAttribute::operator=(const KelAttribute& other) {
    if (this != &other) {
        setFrom(other);
    }
    return *this;
}

KelAttribute::~KelAttribute() {
    dissolve();
}

KelClass* KelAttribute::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}

bool KelAttribute::addKey(KelKey* object) {
    return KelRelations::keyAttributes.link(object, this);
}

bool KelAttribute::removeKey(KelKey* object) noexcept {
    return KelRelations::keyAttributes.unlink(object, this);
}
