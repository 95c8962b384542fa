#pragma once

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"

#include <stdexcept>

namespace exporter {

/// Calls `function` with `one`, an element, as its own class, and returns the result. Typically `function` is a generic
/// lambda that calls an overload set; a class without an overload is then a compile error.
///
/// Throws `std::invalid_argument` for an object that is not an element, which is one without a `kindWord`.
template <class Function>
decltype(auto) asItsClass(const KelObject& one, Function&& function) {
    using enum KelElementType;
    switch (one.elementType) {
    case model:
        return function(static_cast<const KelModel&>(one));
    case designPackage:
        return function(static_cast<const KelDesignPackage&>(one));
    case classObject:
        return function(static_cast<const KelClass&>(one));
    case attribute:
        return function(static_cast<const KelAttribute&>(one));
    case operation:
        return function(static_cast<const KelOperation&>(one));
    case argument:
        return function(static_cast<const KelArgument&>(one));
    case candidateKey:
        return function(static_cast<const KelCandidateKey&>(one));
    case foreignKey:
        return function(static_cast<const KelForeignKey&>(one));
    case association:
        return function(static_cast<const KelAssociation&>(one));
    case associationRole:
        return function(static_cast<const KelAssociationRole&>(one));
    case generalization:
        return function(static_cast<const KelGeneralization&>(one));
    case realization:
        return function(static_cast<const KelRealization&>(one));
    case dependency:
        return function(static_cast<const KelDependency&>(one));
    case classDiagram:
        return function(static_cast<const KelClassDiagram&>(one));
    case baseType:
        return function(static_cast<const KelBaseType&>(one));
    case derivedType:
        return function(static_cast<const KelDerivedType&>(one));
    default:
        throw std::invalid_argument("not an element of a model");
    }
}

} // namespace exporter
