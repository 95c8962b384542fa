#include "host/model/KelDesignPackage.h"

#include "host/model/KelDiagram.h"
#include "host/model/KelModelElement.h"
#include "host/model/links/KelRelations.h"

KelDesignPackage::KelDesignPackage() : KelPackage(KelElementType::designPackage) {}

KelDesignPackage::~KelDesignPackage() {
    dissolve();
}

bool KelDesignPackage::addModelElement(KelModelElement* object) {
    return KelRelations::packageElements.link(this, object);
}

bool KelDesignPackage::addDiagram(KelDiagram* object) {
    return KelRelations::packageDiagrams.link(this, object);
}
