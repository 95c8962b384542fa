#include "host/model/KelAssociationRoleNameMap.h"

#include "host/model/KelAttribute.h"
#include "host/model/KelForeignKey.h"
#include "host/model/links/KelRelations.h"

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
