#include "export/json/elementMembers.h"

#include "export/asItsClass.h"
#include "export/json/JsonMembers.h"
#include "export/words.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelNote.h"
#include "host/model/KelTypeValue.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

void writeNotes(const KelElement& element, JsonMembers& members) {
    members.optionalTexts("notes", element.notes(), &KelNote::description);
}

void writeNamed(const KelModelObject& object, JsonMembers& members) {
    members.text("name", object.getName());
    members.optionalText("description", object.description);
    writeNotes(object, members);
}

struct ToolField {
    const char* member;
    KelString KelMetadataOrigin::*text;
};

constexpr std::array toolFields{
    ToolField{"vendor", &KelMetadataOrigin::vendorName},
    ToolField{"name", &KelMetadataOrigin::toolName},
    ToolField{"versions", &KelMetadataOrigin::toolVersions},
    ToolField{"web", &KelMetadataOrigin::toolWeb},
    ToolField{"methodology", &KelMetadataOrigin::methodologySummary},
    ToolField{"bridgeId", &KelMetadataOrigin::bridgeId},
};

void writeOrigin(const KelMetadataOrigin& origin, JsonMembers& members) {
    members.optionalText("sourceEncoding", origin.sourceEncoding);
    members.optionalText("sourceFormat", origin.sourceFormat);
    members.optionalText("sourcePath", origin.sourcePath);
    members.optionalText("sourceKind", origin.sourceKind);
    const bool hasTool =
        std::ranges::any_of(toolFields, [&origin](const ToolField& field) { return !(origin.*field.text).isEmpty(); });
    if (!hasTool) {
        return;
    }
    members.startObject("tool");
    for (const ToolField& field : toolFields) {
        members.optionalText(field.member, origin.*field.text);
    }
    members.endObject();
}

void writeTypeValue(const KelTypeValue& value, JsonMembers& members) {
    members.text("name", value.getName());
    members.optionalText("value", value.value);
    members.number("position", value.position);
}

void writeConcreteType(const KelConcreteType& type, JsonMembers& members) {
    members.text("name", type.getName());
    members.optionalText("description", type.description);
    members.optionalText("dataType", type.dataType);
    members.optionalNumber("length", type.length);
    members.optionalNumber("scale", type.scale);
    members.optionalFlag("userDefined", type.userDefined);
    members.optionalText("physicalName", type.physicalName);
}

void write(const KelModel& model, JsonMembers& members) {
    members.text("name", model.getName());
    members.optionalText("description", model.description);
    members.optionalObjects("origins", model.metadataOrigins(), writeOrigin);
}

void write(const KelBaseType& type, JsonMembers& members) {
    members.word("kind", "base");
    writeConcreteType(type, members);
}

void write(const KelDerivedType& type, JsonMembers& members) {
    members.word("kind", "derived");
    writeConcreteType(type, members);
    members.reference("derivedFrom", type.getDerivedFromConcreteType());
    members.optionalObjects("values", type.typeValues(), writeTypeValue);
}

void write(const KelDesignPackage& package, JsonMembers& members) {
    members.text("name", package.getName());
    members.optionalText("stereotype", package.stereotype);
    members.optionalText("description", package.description);
    writeNotes(package, members);
}

void write(const KelClassDiagram& diagram, JsonMembers& members) {
    writeNamed(diagram, members);
    members.references("elements", diagram.modelElements());
}

void write(const KelAssociation& association, JsonMembers& members) {
    members.word("kind", "association");
    writeNamed(association, members);
    members.optionalFlag("isAggregation", association.isAggregation);
}

void write(const KelAssociationRole& role, JsonMembers& members) {
    writeNamed(role, members);
    members.reference("class", role.getAssociatedClass());
    members.optionalText("multiplicity", role.multiplicity);
    members.optionalFlag("isAggregate", role.isAggregate);
    members.optionalFlag("isNavigable", role.isNavigable);
    members.optionalFlag("isStatic", role.isStatic);
    members.optionalFlag("isFriend", role.isFriend);
    members.optionalFlag("isSource", role.isSource);
    members.optionalWord("containment", containmentWord(role.containment));
    members.references("foreignKeys", role.foreignKeys());
}

void write(const KelGeneralization& generalization, JsonMembers& members) {
    members.word("kind", "generalization");
    writeNamed(generalization, members);
    members.optionalWord("visibility", visibilityWord(generalization.visibility));
    members.optionalFlag("isVirtual", generalization.isVirtual);
    members.optionalFlag("isFriend", generalization.isFriend);
    members.references("subtypes", generalization.subtypeClasses());
    members.references("supertypes", generalization.supertypeClasses());
}

void write(const KelRealization& realization, JsonMembers& members) {
    members.word("kind", "realization");
    writeNamed(realization, members);
    members.reference("realizationClass", realization.getRealizationClass());
    members.reference("specificationClass", realization.getSpecificationClass());
}

void write(const KelDependency& dependency, JsonMembers& members) {
    members.word("kind", "dependency");
    writeNamed(dependency, members);
    members.reference("client", dependency.getClientClass());
    members.reference("supplier", dependency.getSupplierClass());
}

void writeRoleNameMap(const KelAssociationRoleNameMap& map, JsonMembers& members) {
    members.text("name", map.getName());
    members.reference("source", map.getSourceAttribute());
    members.reference("destination", map.getDestinationAttribute());
}

void write(const KelClass& classObject, JsonMembers& members) {
    members.word("kind", "class");
    members.text("name", classObject.getName());
    members.optionalWord("category", categoryWord(classObject.categoryType));
    members.optionalText("stereotype", classObject.stereotype);
    members.optionalText("description", classObject.description);
    writeNotes(classObject, members);
    members.optionalFlag("isAbstract", classObject.isAbstract);
    members.optionalFlag("isPersistent", classObject.isPersistent);
    members.optionalNumber("space", classObject.space);
    members.optionalText("multiplicity", classObject.multiplicity);
    members.optionalNumber("concurrency", classObject.concurrency);
}

void write(const KelAttribute& attribute, JsonMembers& members) {
    writeNamed(attribute, members);
    members.reference("type", attribute.getType());
    members.optionalWord("visibility", visibilityWord(attribute.visibility));
    members.optionalWord("containment", containmentWord(attribute.containment));
    members.optionalFlag("isStatic", attribute.isStatic);
    members.optionalFlag("isDerived", attribute.isDerived);
    members.number("position", attribute.position);
    members.optionalText("initialValue", attribute.initialValue);
}

void write(const KelOperation& operation, JsonMembers& members) {
    writeNamed(operation, members);
    members.optionalWord("visibility", visibilityWord(operation.visibility));
    members.optionalNumber("concurrency", operation.concurrency);
    members.optionalFlag("isFriend", operation.isFriend);
    members.optionalFlag("isStatic", operation.isStatic);
    members.optionalFlag("isVirtual", operation.isVirtual);
    members.optionalText("semantics", operation.semantics);
    members.optionalText("precondition", operation.precondition);
    members.optionalText("postcondition", operation.postcondition);
    members.reference("returnType", operation.getReturnType());
}

void write(const KelArgument& argument, JsonMembers& members) {
    writeNamed(argument, members);
    members.reference("type", argument.getType());
    members.number("position", argument.position);
    members.optionalText("initialValue", argument.initialValue);
}

void write(const KelCandidateKey& key, JsonMembers& members) {
    members.word("kind", "candidate");
    members.text("name", key.getName());
    members.optionalFlag("userDefined", key.userDefined);
    members.optionalFlag("isPrimary",
                         key.getPrimaryOfClass() != nullptr && key.getPrimaryOfClass() == key.getAssociatedClass());
    members.references("attributes", key.attributes());
}

void write(const KelForeignKey& key, JsonMembers& members) {
    members.word("kind", "foreign");
    members.text("name", key.getName());
    members.optionalFlag("userDefined", key.userDefined);
    members.reference("candidateKey", key.getCandidateKey());
    members.references("attributes", key.attributes());
    members.optionalObjects("roleNameMaps", key.roleNameMaps(), writeRoleNameMap);
}

} // namespace

void writeMembers(const KelObject& element, JsonMembers& members) {
    asItsClass(element, [&](const auto& object) { write(object, members); });
}

} // namespace exporter
