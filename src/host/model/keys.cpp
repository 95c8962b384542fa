// Keys of classes, and the maps from attributes of candidate keys to those of foreign keys.
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelKey.h"
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

KelCandidateKey::KelCandidateKey() : KelKey(KelElementType::candidateKey) {}

KelCandidateKey::~KelCandidateKey() {
    dissolve();
}

bool KelCandidateKey::addPrimaryOfClass(KelClass* object) {
    return KelRelations::primaryOfClass.set(this, object);
}

KelClass* KelCandidateKey::getPrimaryOfClass() const {
    return static_cast<KelClass*>(primaryOfClass_.get());
}

KelForeignKey::KelForeignKey() : KelKey(KelElementType::foreignKey) {}

KelForeignKey::~KelForeignKey() {
    dissolve();
}

bool KelForeignKey::addCandidateKey(KelCandidateKey* object) {
    return KelRelations::candidateKey.set(this, object);
}

KelCandidateKey* KelForeignKey::getCandidateKey() const {
    return static_cast<KelCandidateKey*>(candidateKey_.get());
}

KelAssociationRoleNameMap::KelAssociationRoleNameMap() : KelModelObject(KelElementType::associationRoleNameMap) {}

KelAssociationRoleNameMap::~KelAssociationRoleNameMap() {
    dissolve();
}

bool KelAssociationRoleNameMap::addForeignKey(KelForeignKey* object) {
    return KelRelations::roleNameMaps.link(object, this);
}

KelForeignKey* KelAssociationRoleNameMap::getForeignKey() const {
    return static_cast<KelForeignKey*>(foreignKey_.get());
}

bool KelAssociationRoleNameMap::addSourceAttribute(KelAttribute* object) {
    return KelRelations::sourceAttribute.set(this, object);
}

KelAttribute* KelAssociationRoleNameMap::getSourceAttribute() const {
    return static_cast<KelAttribute*>(sourceAttribute_.get());
}

bool KelAssociationRoleNameMap::addDestinationAttribute(KelAttribute* object) {
    return KelRelations::destinationAttribute.set(this, object);
}

KelAttribute* KelAssociationRoleNameMap::getDestinationAttribute() const {
    return static_cast<KelAttribute*>(destinationAttribute_.get());
}
