#include "export/jsonMembersOf.h"

#include "export/JsonMembers.h"
#include "export/jsonCommonMembers.h"
#include "export/words.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

namespace exporter {

void writeMembersOf(const KelDesignPackage& package, JsonMembers& members) {
    members.text("name", package.getName());
    members.optionalText("stereotype", package.stereotype);
    members.optionalText("description", package.description);
    writeNotes(package, members);
}

void writeMembersOf(const KelClassDiagram& diagram, JsonMembers& members) {
    writeNamed(diagram, members);
    members.optionalReferences("elements", diagram.modelElements());
}

void writeMembersOf(const KelAssociation& association, JsonMembers& members) {
    writeNamed(association, members);
    members.optionalFlag("isAggregation", association.isAggregation);
}

void writeMembersOf(const KelAssociationRole& role, JsonMembers& members) {
    writeNamed(role, members);
    members.reference("class", role.getAssociatedClass());
    members.optionalText("multiplicity", role.multiplicity);
    members.optionalFlag("isAggregate", role.isAggregate);
    members.optionalFlag("isNavigable", role.isNavigable);
    members.optionalFlag("isStatic", role.isStatic);
    members.optionalFlag("isFriend", role.isFriend);
    members.optionalFlag("isSource", role.isSource);
    members.optionalWord("containment", containmentWord(role.containment));
    members.optionalReferences("foreignKeys", role.foreignKeys());
}

void writeMembersOf(const KelGeneralization& generalization, JsonMembers& members) {
    writeNamed(generalization, members);
    members.optionalWord("visibility", visibilityWord(generalization.visibility));
    members.optionalFlag("isVirtual", generalization.isVirtual);
    members.optionalFlag("isFriend", generalization.isFriend);
    members.optionalReferences("subtypes", generalization.subtypeClasses());
    members.optionalReferences("supertypes", generalization.supertypeClasses());
}

void writeMembersOf(const KelRealization& realization, JsonMembers& members) {
    writeNamed(realization, members);
    members.reference("realizationClass", realization.getRealizationClass());
    members.reference("specificationClass", realization.getSpecificationClass());
}

void writeMembersOf(const KelDependency& dependency, JsonMembers& members) {
    writeNamed(dependency, members);
    members.reference("client", dependency.getClientClass());
    members.reference("supplier", dependency.getSupplierClass());
}

} // namespace exporter
