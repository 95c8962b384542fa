#include "export/jsonMembersOf.h"

#include "export/JsonMembers.h"
#include "export/jsonCommonMembers.h"
#include "export/words.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

namespace exporter {

namespace {

void writeRoleNameMap(const KelAssociationRoleNameMap& map, JsonMembers& members) {
    members.text("name", map.getName());
    members.reference("source", map.getSourceAttribute());
    members.reference("destination", map.getDestinationAttribute());
}

} // namespace

void writeMembersOf(const KelClass& classObject, JsonMembers& members) {
    members.text("name", classObject.getName());
    members.optionalWord("category", categoryWord(classObject.categoryType));
    members.optionalText("stereotype", classObject.stereotype);
    members.optionalText("description", classObject.description);
    writeNotes(classObject, members);
    members.optionalFlag("isAbstract", classObject.isAbstract);
    members.optionalFlag("isPersistent", classObject.isPersistent);
    members.optionalNumber("space", classObject.space, 0);
    members.optionalText("multiplicity", classObject.multiplicity);
    members.optionalNumber("concurrency", classObject.concurrency, 0);
}

void writeMembersOf(const KelAttribute& attribute, JsonMembers& members) {
    writeNamed(attribute, members);
    members.reference("type", attribute.getType());
    members.optionalWord("visibility", visibilityWord(attribute.visibility));
    members.optionalWord("containment", containmentWord(attribute.containment));
    members.optionalFlag("isStatic", attribute.isStatic);
    members.optionalFlag("isDerived", attribute.isDerived);
    members.number("position", attribute.position);
    members.optionalText("initialValue", attribute.initialValue);
}

void writeMembersOf(const KelOperation& operation, JsonMembers& members) {
    writeNamed(operation, members);
    members.optionalWord("visibility", visibilityWord(operation.visibility));
    members.optionalNumber("concurrency", operation.concurrency, 0);
    members.optionalFlag("isFriend", operation.isFriend);
    members.optionalFlag("isStatic", operation.isStatic);
    members.optionalFlag("isVirtual", operation.isVirtual);
    members.optionalText("semantics", operation.semantics);
    members.optionalText("precondition", operation.precondition);
    members.optionalText("postcondition", operation.postcondition);
    members.reference("returnType", operation.getReturnType());
}

void writeMembersOf(const KelArgument& argument, JsonMembers& members) {
    writeNamed(argument, members);
    members.reference("type", argument.getType());
    members.number("position", argument.position);
    members.optionalText("initialValue", argument.initialValue);
}

void writeMembersOf(const KelCandidateKey& key, JsonMembers& members) {
    members.text("name", key.getName());
    members.optionalFlag("userDefined", key.userDefined);
    members.optionalFlag("isPrimary",
                         key.getPrimaryOfClass() != nullptr && key.getPrimaryOfClass() == key.getAssociatedClass());
    members.optionalReferences("attributes", key.attributes());
}

void writeMembersOf(const KelForeignKey& key, JsonMembers& members) {
    members.text("name", key.getName());
    members.optionalFlag("userDefined", key.userDefined);
    members.reference("candidateKey", key.getCandidateKey());
    members.optionalReferences("attributes", key.attributes());
    members.optionalList("roleNameMaps", key.roleNameMaps(), writeRoleNameMap);
}

} // namespace exporter
