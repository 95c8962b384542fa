// The relationships between classes: associations and their roles, generalizations, realizations, dependencies.
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"
#include "host/model/links/KelRelations.h"

KelAssociation::KelAssociation() : KelRelationship(KelElementType::association) {}

KelAssociation::~KelAssociation() {
    dissolve();
}

bool KelAssociation::addAssociationRole(KelAssociationRole* object) {
    return KelRelations::associationRoles.link(this, object);
}

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

KelGeneralization::KelGeneralization() : KelRelationship(KelElementType::generalization) {}

KelGeneralization::~KelGeneralization() {
    dissolve();
}

bool KelGeneralization::addSubtypeClass(KelClass* object) {
    return KelRelations::subtypeClasses.link(this, object);
}

bool KelGeneralization::addSupertypeClass(KelClass* object) {
    return KelRelations::supertypeClasses.link(this, object);
}

KelRealization::KelRealization() : KelRelationship(KelElementType::realization) {}

KelRealization::~KelRealization() {
    dissolve();
}

bool KelRealization::addRealizationClass(KelClass* object) {
    return KelRelations::realizationClass.set(this, object);
}

KelClass* KelRealization::getRealizationClass() const {
    return static_cast<KelClass*>(realizationClass_.get());
}

bool KelRealization::addSpecificationClass(KelClass* object) {
    return KelRelations::specificationClass.set(this, object);
}

KelClass* KelRealization::getSpecificationClass() const {
    return static_cast<KelClass*>(specificationClass_.get());
}

KelDependency::KelDependency() : KelRelationship(KelElementType::dependency) {}

KelDependency::~KelDependency() {
    dissolve();
}

bool KelDependency::addClientClass(KelClass* object) {
    return KelRelations::clientClass.set(this, object);
}

KelClass* KelDependency::getClientClass() const {
    return static_cast<KelClass*>(clientClass_.get());
}

bool KelDependency::addSupplierClass(KelClass* object) {
    return KelRelations::supplierClass.set(this, object);
}

KelClass* KelDependency::getSupplierClass() const {
    return static_cast<KelClass*>(supplierClass_.get());
}
