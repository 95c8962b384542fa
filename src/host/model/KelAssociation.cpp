#include "host/model/KelAssociation.h"

#include "host/model/KelAssociationRole.h"
#include "host/model/links/KelRelations.h"

KelAssociation::KelAssociation() : KelRelationship(KelElementType::association) {}

KelAssociation::~KelAssociation() {
    dissolve();
}

bool KelAssociation::addAssociationRole(KelAssociationRole* object) {
    return KelRelations::associationRoles.link(this, object);
}
