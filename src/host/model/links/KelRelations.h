#pragma once

#include "host/model/links/KelRelation.h"

#include <span>

/// The table of all relations of the repository: constants, made at compile time. The rows are in KelRelations.cpp.
///
/// Their order is that in which a traversal visits the parts of an object.
struct KelRelations {
    // The holder owns the targets.
    static const KelRelation elementNotes;
    static const KelRelation modelTypes;
    static const KelRelation modelOrigins;
    static const KelRelation childPackages;
    static const KelRelation packageElements;
    static const KelRelation packageDiagrams;
    static const KelRelation classAttributes;
    static const KelRelation classOperations;
    static const KelRelation classArguments;
    static const KelRelation classKeys;
    static const KelRelation operationArguments;
    static const KelRelation associationRoles;
    static const KelRelation typeValues;
    static const KelRelation roleNameMaps;
    // The holder refers to the targets.
    static const KelRelation diagramElements;
    static const KelRelation featureType;
    static const KelRelation argumentType;
    static const KelRelation returnType;
    static const KelRelation derivedFrom;
    static const KelRelation aliasOf;
    static const KelRelation keyAttributes;
    static const KelRelation primaryOfClass;
    static const KelRelation candidateKey;
    static const KelRelation roleForeignKeys;
    static const KelRelation roleClass;
    static const KelRelation subtypeClasses;
    static const KelRelation supertypeClasses;
    static const KelRelation realizationClass;
    static const KelRelation specificationClass;
    static const KelRelation clientClass;
    static const KelRelation supplierClass;
    static const KelRelation sourceAttribute;
    static const KelRelation destinationAttribute;

    /// All of the above, in this order. The span lives as long as the library is loaded.
    [[nodiscard]] KEL_API static std::span<const KelRelation* const> all();
};
