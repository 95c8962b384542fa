#pragma once

class KelArgument;
class KelAssociation;
class KelAssociationRole;
class KelAttribute;
class KelBaseType;
class KelCandidateKey;
class KelClass;
class KelClassDiagram;
class KelDependency;
class KelDerivedType;
class KelDesignPackage;
class KelForeignKey;
class KelGeneralization;
class KelModel;
class KelOperation;
class KelRealization;

namespace exporter {

class JsonMembers;

/// What the document writes of each class behind "id" and "kind", without the objects inside.

void writeMembersOf(const KelModel& model, JsonMembers& members);
void writeMembersOf(const KelBaseType& type, JsonMembers& members);
void writeMembersOf(const KelDerivedType& type, JsonMembers& members);
void writeMembersOf(const KelDesignPackage& package, JsonMembers& members);
void writeMembersOf(const KelClassDiagram& diagram, JsonMembers& members);
void writeMembersOf(const KelClass& classObject, JsonMembers& members);
void writeMembersOf(const KelAttribute& attribute, JsonMembers& members);
void writeMembersOf(const KelOperation& operation, JsonMembers& members);
void writeMembersOf(const KelArgument& argument, JsonMembers& members);
void writeMembersOf(const KelCandidateKey& key, JsonMembers& members);
void writeMembersOf(const KelForeignKey& key, JsonMembers& members);
void writeMembersOf(const KelAssociation& association, JsonMembers& members);
void writeMembersOf(const KelAssociationRole& role, JsonMembers& members);
void writeMembersOf(const KelGeneralization& generalization, JsonMembers& members);
void writeMembersOf(const KelRealization& realization, JsonMembers& members);
void writeMembersOf(const KelDependency& dependency, JsonMembers& members);

} // namespace exporter
