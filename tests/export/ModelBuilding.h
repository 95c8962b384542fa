#pragma once

#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"

/// A new object of that name, for an owner to take.
template <class T>
T* named(const char* name) {
    T* object = new T;
    object->setName(name);
    return object;
}

inline KelNote* note(const char* text) {
    auto* made = new KelNote;
    made->description = text;
    return made;
}

inline KelDesignPackage& addPackage(KelPackage& parent, const char* name) {
    auto* package = named<KelDesignPackage>(name);
    parent.addChildPackage(package);
    return *package;
}

/// Adds a model element of class `T` to the package.
template <class T>
T& addElement(KelDesignPackage& package, const char* name) {
    T* element = named<T>(name);
    package.addModelElement(element);
    return *element;
}

inline KelAssociationRole& addRole(KelAssociation& association, const char* name, KelClass* associatedClass) {
    auto* role = named<KelAssociationRole>(name);
    association.addAssociationRole(role);
    role->addAssociatedClass(associatedClass);
    return *role;
}
