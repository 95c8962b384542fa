#pragma once

/// The codes of the repository's classes, abstract ones included; no object has the code of an abstract class. The
/// numbers are part of the interface and never change. Each object keeps the code of its class in
/// `KelObject::elementType`, its first data member.
enum class KelElementType : int {
    element = 0, // abstract
    note = 1,
    model = 2,
    type = 3, // abstract
    baseType = 4,
    derivedType = 5,
    aliasType = 6,
    typeValue = 7,
    designPackage = 9,
    diagram = 10, // abstract
    classDiagram = 11,
    modelElement = 12, // abstract
    classObject = 13,  // KelClass
    attribute = 14,
    relationship = 15, // abstract
    generalization = 16,
    association = 17,
    associationRole = 18,
    associationRoleNameMap = 19,
    key = 20, // abstract
    candidateKey = 21,
    foreignKey = 22,
    operation = 23,
    argument = 24,
    object = 33, // abstract
    dependency = 40,
    realization = 41,
    concreteType = 50,  // abstract
    modelObject = 59,   // abstract
    mappingObject = 60, // abstract
    classifier = 75,    // abstract
    classifierMap = 76,
    feature = 77, // abstract
    transformation = 79,
    join = 92,
    joinRole = 93,
    metadataOrigin = 98,
    structuralFeature = 99, // abstract
    package = 144,          // abstract
};
