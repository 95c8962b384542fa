#pragma once

#include "host/model/links/KelRelation.h"

#include <span>

/// The repository's relations, all of them.
struct KelRelations {
    // owned by
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
    // refers to
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

    /// All of the above, in this order.
    [[nodiscard]] KEL_API static std::span<const KelRelation* const> all();
};
