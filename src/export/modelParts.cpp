#include "export/modelParts.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelKey.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace exporter {

namespace {

using enum KelElementType;

// The classes that have a form in an export. The collections could hold others, which no import makes.
constexpr std::array writtenClasses{
    baseType,     derivedType,  designPackage, classObject, association, generalization, realization,     dependency,
    classDiagram, candidateKey, foreignKey,    attribute,   operation,   argument,       associationRole,
};

bool isWritten(const KelObject* object) {
    return std::ranges::find(writtenClasses, object->elementType) != writtenClasses.end();
}

/// Collects what `links` of an `Owner` holds.
template <class Owner, auto links>
void collect(const KelObject& owner, std::vector<const KelObject*>& into) {
    for (const KelObject* object : (static_cast<const Owner&>(owner).*links)()) {
        if (isWritten(object)) {
            into.push_back(object);
        }
    }
}

std::int16_t attributePosition(const KelObject* attribute) {
    return static_cast<const KelAttribute*>(attribute)->position;
}

/// By position, equal positions by name.
void collectAttributes(const KelObject& owner, std::vector<const KelObject*>& into) {
    const auto first = static_cast<std::ptrdiff_t>(into.size());
    collect<KelClass, &KelClass::attributes>(owner, into); // comes in name order
    std::ranges::stable_sort(into.begin() + first, into.end(), {}, attributePosition);
}

constexpr Part types{"types", collect<KelModel, &KelModel::types>};
constexpr Part packages{"packages", collect<KelPackage, &KelPackage::childPackages>};
constexpr Part elements{"elements", collect<KelDesignPackage, &KelDesignPackage::modelElements>};
constexpr Part diagrams{"diagrams", collect<KelDesignPackage, &KelDesignPackage::diagrams>};
constexpr Part templateArguments{"arguments", collect<KelClass, &KelClass::arguments>};
constexpr Part attributes{"attributes", collectAttributes};
constexpr Part operations{"operations", collect<KelClass, &KelClass::operations>};
constexpr Part keys{"keys", collect<KelClass, &KelClass::keys>};
constexpr Part arguments{"arguments", collect<KelOperation, &KelOperation::arguments>};
constexpr Part roles{"roles", collect<KelAssociation, &KelAssociation::associationRoles>};

constexpr std::array modelInDocument{types, packages};
constexpr std::array modelInOutline{packages, types};
constexpr std::array inPackage{packages, elements, diagrams};
constexpr std::array inClass{templateArguments, attributes, operations, keys};
constexpr std::array inOperation{arguments};
constexpr std::array inAssociation{roles};

} // namespace

std::span<const Part> documentParts(const KelObject& owner) {
    switch (owner.elementType) {
    case model:
        return modelInDocument;
    case designPackage:
        return inPackage;
    case classObject:
        return inClass;
    case operation:
        return inOperation;
    case association:
        return inAssociation;
    default:
        return {};
    }
}

std::span<const Part> outlineParts(const KelObject& owner) {
    switch (owner.elementType) {
    case model:
        return modelInOutline;
    case operation:
        return {};
    default:
        return documentParts(owner);
    }
}

} // namespace exporter
