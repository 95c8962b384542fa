#include "host/model/KelDiagram.h"

#include "host/model/KelDesignPackage.h"
#include "host/model/KelModelElement.h"
#include "host/model/links/KelRelations.h"

KelDiagram::~KelDiagram() {
    dissolve();
}

bool KelDiagram::addModelElement(KelModelElement* object) {
    return KelRelations::diagramElements.link(this, object);
}

bool KelDiagram::removeModelElement(KelModelElement* object) noexcept {
    return KelRelations::diagramElements.unlink(this, object);
}

KelDesignPackage* KelDiagram::getDesignPackage() const {
    return static_cast<KelDesignPackage*>(designPackage_.get());
}
