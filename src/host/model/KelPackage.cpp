#include "host/model/KelPackage.h"

#include "host/model/links/KelRelations.h"

KelPackage::~KelPackage() {
    dissolve();
}

bool KelPackage::addChildPackage(KelPackage* object) {
    return KelRelations::childPackages.link(this, object);
}

KelPackage* KelPackage::getParentPackage() const {
    return static_cast<KelPackage*>(parentPackage_.get());
}
