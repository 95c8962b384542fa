// The model, its origins, its packages, and the base of the elements in them.
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelPackage.h"
#include "host/model/KelType.h"
#include "host/model/links/KelRelations.h"

KelModel::KelModel() : KelPackage(KelElementType::model) {}

KelModel::~KelModel() {
    dissolve();
}

void KelModel::recursiveDelete() noexcept {
    deleteOwned();
    setName(emptyString);
    description.empty();
    physicalName.empty();
}

bool KelModel::isEmpty() const noexcept {
    return notes().isEmpty() && types().isEmpty() && metadataOrigins().isEmpty() && childPackages().isEmpty();
}

bool KelModel::addMetadataOrigin(KelMetadataOrigin* object) {
    return KelRelations::modelOrigins.link(this, object);
}

bool KelModel::addType(KelType* object) {
    return KelRelations::modelTypes.link(this, object);
}

bool KelModel::removeType(KelType* object) noexcept {
    return KelRelations::modelTypes.unlink(this, object);
}

bool KelModel::removeType(int index) noexcept {
    return removeType(types()[index]);
}

KelMetadataOrigin::KelMetadataOrigin() : KelElement(KelElementType::metadataOrigin) {}

KelMetadataOrigin::~KelMetadataOrigin() {
    dissolve();
}

KelModel* KelMetadataOrigin::getModel() const {
    return static_cast<KelModel*>(model_.get());
}

KelPackage::~KelPackage() {
    dissolve();
}

bool KelPackage::addChildPackage(KelPackage* object) {
    return KelRelations::childPackages.link(this, object);
}

KelPackage* KelPackage::getParentPackage() const {
    return static_cast<KelPackage*>(parentPackage_.get());
}

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
