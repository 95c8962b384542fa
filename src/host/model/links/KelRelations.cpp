#include "host/model/links/KelRelations.h"

#include "host/model/KelAliasType.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelTypeValue.h"

#include <array>

namespace {

template <class T>
constexpr KelEndMember end(KelOne T::*one) {
    return {.one = static_cast<KelOne KelObject::*>(one)};
}

template <class T>
constexpr KelEndMember end(KelMany T::*many) {
    return {.many = static_cast<KelMany KelObject::*>(many)};
}

constexpr KelEndMember end(KelRareEnd rare) {
    return {.rare = rare};
}

using enum KelElementType;
using enum KelHold;

} // namespace

// clang-format off
constexpr KelRelation KelRelations::elementNotes{"notes", element, end(KelRareEnd::notes), note, end(&KelNote::element_), owns};
constexpr KelRelation KelRelations::modelTypes{"types", model, end(&KelModel::types_), type, end(&KelType::model_), owns};
constexpr KelRelation KelRelations::modelOrigins{"metadataOrigins", model, end(&KelModel::origins_), metadataOrigin, end(&KelMetadataOrigin::model_), owns};
constexpr KelRelation KelRelations::childPackages{"childPackages", package, end(&KelPackage::childPackages_), package, end(&KelPackage::parentPackage_), owns};
constexpr KelRelation KelRelations::packageElements{"modelElements", designPackage, end(&KelDesignPackage::modelElements_), modelElement, end(&KelModelElement::designPackage_), owns};
constexpr KelRelation KelRelations::packageDiagrams{"diagrams", designPackage, end(&KelDesignPackage::diagrams_), diagram, end(&KelDiagram::designPackage_), owns};
constexpr KelRelation KelRelations::classAttributes{"attributes", classObject, end(&KelClass::attributes_), attribute, end(&KelAttribute::class_), owns, true};
constexpr KelRelation KelRelations::classOperations{"operations", classObject, end(&KelClass::operations_), operation, end(&KelOperation::class_), owns};
constexpr KelRelation KelRelations::classArguments{"arguments", classObject, end(&KelClass::arguments_), argument, end(&KelArgument::class_), owns};
constexpr KelRelation KelRelations::classKeys{"keys", classObject, end(&KelClass::keys_), key, end(&KelKey::class_), owns};
constexpr KelRelation KelRelations::operationArguments{"arguments", operation, end(&KelOperation::arguments_), argument, end(&KelArgument::operation_), owns};
constexpr KelRelation KelRelations::associationRoles{"associationRoles", association, end(&KelAssociation::associationRoles_), associationRole, end(&KelAssociationRole::association_), owns};
constexpr KelRelation KelRelations::typeValues{"typeValues", derivedType, end(KelRareEnd::typeValues), typeValue, end(&KelTypeValue::derivedType_), owns};
constexpr KelRelation KelRelations::roleNameMaps{"roleNameMaps", foreignKey, end(&KelForeignKey::roleNameMaps_), associationRoleNameMap, end(&KelAssociationRoleNameMap::foreignKey_), owns};

constexpr KelRelation KelRelations::diagramElements{"modelElements", diagram, end(&KelDiagram::modelElements_), modelElement, end(&KelModelElement::diagrams_), refers};
constexpr KelRelation KelRelations::featureType{"type", feature, end(&KelFeature::type_), type, end(&KelType::features_), refers};
constexpr KelRelation KelRelations::argumentType{"type", argument, end(&KelArgument::type_), type, end(KelRareEnd::arguments), refers};
constexpr KelRelation KelRelations::returnType{"returnType", operation, end(&KelOperation::returnType_), type, end(KelRareEnd::operations), refers};
constexpr KelRelation KelRelations::derivedFrom{"derivedFrom", derivedType, end(&KelDerivedType::derivedFrom_), concreteType, end(KelRareEnd::derivedTypes), refers};
constexpr KelRelation KelRelations::aliasOf{"aliasOf", aliasType, end(&KelAliasType::type_), type, end(KelRareEnd::aliasTypes), refers};
constexpr KelRelation KelRelations::keyAttributes{"attributes", key, end(&KelKey::attributes_), attribute, end(KelRareEnd::keys), refers};
constexpr KelRelation KelRelations::primaryOfClass{"primaryOfClass", KelElementType::candidateKey, end(&KelCandidateKey::primaryOfClass_), classObject, end(&KelClass::primaryKey_), refers};
constexpr KelRelation KelRelations::candidateKey{"candidateKey", foreignKey, end(&KelForeignKey::candidateKey_), KelElementType::candidateKey, end(&KelCandidateKey::foreignKeys_), refers};
constexpr KelRelation KelRelations::roleForeignKeys{"foreignKeys", associationRole, end(&KelAssociationRole::foreignKeys_), foreignKey, end(&KelForeignKey::associationRoles_), refersDeletes};
constexpr KelRelation KelRelations::roleClass{"associatedClass", associationRole, end(&KelAssociationRole::associatedClass_), classObject, end(&KelClass::associationRoles_), refers};
constexpr KelRelation KelRelations::subtypeClasses{"subtypeClasses", generalization, end(&KelGeneralization::subtypeClasses_), classObject, end(&KelClass::generalizationsAsSubtype_), refers};
constexpr KelRelation KelRelations::supertypeClasses{"supertypeClasses", generalization, end(&KelGeneralization::supertypeClasses_), classObject, end(&KelClass::generalizationsAsSupertype_), refers};
constexpr KelRelation KelRelations::realizationClass{"realizationClass", realization, end(&KelRealization::realizationClass_), classObject, end(&KelClass::realizationsAsRealization_), refers};
constexpr KelRelation KelRelations::specificationClass{"specificationClass", realization, end(&KelRealization::specificationClass_), classObject, end(&KelClass::realizationsAsSpecification_), refers};
constexpr KelRelation KelRelations::clientClass{"clientClass", dependency, end(&KelDependency::clientClass_), classObject, end(&KelClass::dependenciesAsClient_), refers};
constexpr KelRelation KelRelations::supplierClass{"supplierClass", dependency, end(&KelDependency::supplierClass_), classObject, end(&KelClass::dependenciesAsSupplier_), refers};
constexpr KelRelation KelRelations::sourceAttribute{"sourceAttribute", associationRoleNameMap, end(&KelAssociationRoleNameMap::sourceAttribute_), attribute, end(KelRareEnd::mapsAsSource), refers};
constexpr KelRelation KelRelations::destinationAttribute{"destinationAttribute", associationRoleNameMap, end(&KelAssociationRoleNameMap::destinationAttribute_), attribute, end(KelRareEnd::mapsAsDestination), refers};
// clang-format on

std::span<const KelRelation* const> KelRelations::all() {
    static constexpr std::array relations{
        &elementNotes,       &modelTypes,       &modelOrigins,         &childPackages,      &packageElements,
        &packageDiagrams,    &classAttributes,  &classOperations,      &classArguments,     &classKeys,
        &operationArguments, &associationRoles, &typeValues,           &roleNameMaps,       &diagramElements,
        &featureType,        &argumentType,     &returnType,           &derivedFrom,        &aliasOf,
        &keyAttributes,      &primaryOfClass,   &candidateKey,         &roleForeignKeys,    &roleClass,
        &subtypeClasses,     &supertypeClasses, &realizationClass,     &specificationClass, &clientClass,
        &supplierClass,      &sourceAttribute,  &destinationAttribute,
    };
    return relations;
}
