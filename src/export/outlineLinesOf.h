#pragma once

#include <string>

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

class OutlineLines;

/// The line that the outline has for an object of each class.

[[nodiscard]] std::string lineOf(const KelModel& model);
[[nodiscard]] std::string lineOf(const KelBaseType& type);
[[nodiscard]] std::string lineOf(const KelDerivedType& type);
[[nodiscard]] std::string lineOf(const KelDesignPackage& package);
[[nodiscard]] std::string lineOf(const KelClassDiagram& diagram);
[[nodiscard]] std::string lineOf(const KelClass& classObject);
[[nodiscard]] std::string lineOf(const KelAttribute& attribute);
[[nodiscard]] std::string lineOf(const KelOperation& operation);
[[nodiscard]] std::string lineOf(const KelArgument& argument); // a template argument
[[nodiscard]] std::string lineOf(const KelCandidateKey& key);
[[nodiscard]] std::string lineOf(const KelForeignKey& key);
[[nodiscard]] std::string lineOf(const KelAssociation& association);
[[nodiscard]] std::string lineOf(const KelAssociationRole& role);
[[nodiscard]] std::string lineOf(const KelGeneralization& generalization);
[[nodiscard]] std::string lineOf(const KelRealization& realization);
[[nodiscard]] std::string lineOf(const KelDependency& dependency);

/// The lines below that stand for no object inside.

void writeLinesBelow(const KelModel& model, OutlineLines& lines);          // origins
void writeLinesBelow(const KelDerivedType& type, OutlineLines& lines);     // values
void writeLinesBelow(const KelClassDiagram& diagram, OutlineLines& lines); // elements drawn
void writeLinesBelow(const KelOperation& operation, OutlineLines& lines);  // notes on its arguments
void writeLinesBelow(const KelForeignKey& key, OutlineLines& lines);       // role name maps

} // namespace exporter
