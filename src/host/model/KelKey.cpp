#include "host/model/KelKey.h"

#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/links/KelRelations.h"

KelKey::~KelKey() {
    dissolve();
}

bool KelKey::addAttribute(KelAttribute* object) {
    return KelRelations::keyAttributes.link(this, object);
}

bool KelKey::removeAttribute(KelAttribute* object) noexcept {
    return KelRelations::keyAttributes.unlink(this, object);
}

bool KelKey::addAssociatedClass(KelClass* object) {
    return KelRelations::classKeys.link(object, this);
}

KelClass* KelKey::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}
