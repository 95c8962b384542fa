#include "host/model/KelModelElement.h"

#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/links/KelRelations.h"

KelModelElement::~KelModelElement() {
    dissolve();
}

bool KelModelElement::addDiagram(KelDiagram* object) {
    return KelRelations::diagramElements.link(object, this);
}

bool KelModelElement::removeDiagram(int index) noexcept {
    return KelRelations::diagramElements.unlink(diagrams()[index], this);
}

KelDesignPackage* KelModelElement::getDesignPackage() const {
    return static_cast<KelDesignPackage*>(designPackage_.get());
}

bool KelModelElement::removeDesignPackage() noexcept {
    return KelRelations::packageElements.unlink(getDesignPackage(), this);
}
