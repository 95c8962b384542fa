#include "host/model/KelAssociationRole.h"

#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/links/KelRelations.h"

KelAssociationRole::KelAssociationRole() : KelModelObject(KelElementType::associationRole) {}

KelAssociationRole::~KelAssociationRole() {
    dissolve();
}

KelAssociation* KelAssociationRole::getAssociation() const {
    return static_cast<KelAssociation*>(association_.get());
}

bool KelAssociationRole::addAssociatedClass(KelClass* object) {
    return KelRelations::roleClass.set(this, object);
}

KelClass* KelAssociationRole::getAssociatedClass() const {
    return static_cast<KelClass*>(associatedClass_.get());
}

bool KelAssociationRole::addForeignKey(KelForeignKey* object) {
    return KelRelations::roleForeignKeys.link(this, object);
}

void setSourceProperty(KelAssociationRole* first, KelAssociationRole* second) {
    if (first != nullptr) {
        first->isSource = true;
    }
    if (second != nullptr) {
        second->isSource = false;
    }
}
