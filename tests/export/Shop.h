#pragma once

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
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
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelTypeValue.h"

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

inline KelType* addType(KelModel& model, const char* name, const char* dataType = "undefined") {
    auto* type = named<KelDerivedType>(name);
    type->dataType = dataType;
    model.addType(type);
    return type;
}

/// Adds an attribute behind the others; `type` may be null.
inline KelAttribute& addAttribute(KelClass& owner, const char* name, KelType* type) {
    auto* attribute = named<KelAttribute>(name);
    attribute->position = static_cast<std::int16_t>(owner.getAttributeCount());
    owner.addAttribute(attribute);
    if (type != nullptr) {
        attribute->addType(type);
    }
    return *attribute;
}

inline void addInheritance(KelDesignPackage& package, KelClass& subtype, KelClass& supertype) {
    auto& generalization = addElement<KelGeneralization>(package, "");
    generalization.addSubtypeClass(&subtype);
    generalization.addSupertypeClass(&supertype);
}

/// Adds an association with the multiplicities of its ends, of which the first is the source.
inline KelAssociation& addLink(KelDesignPackage& package, const char* name, KelClass& from, const char* many,
                               KelClass& to, const char* one) {
    auto& association = addElement<KelAssociation>(package, name);
    addRole(association, "", &from).multiplicity = many;
    addRole(association, "", &to).multiplicity = one;
    association.associationRoles().first()->isSource = true;
    return association;
}

/// Adds packages, each in the one before, and returns the innermost.
inline KelPackage& addNested(KelModel& model, int depth) {
    KelPackage* innermost = &model;
    for (int made = 0; made < depth; ++made) {
        innermost = &addPackage(*innermost, "p");
    }
    return *innermost;
}

/// A model in which every kind of object occurs.
class Shop {
public:
    Shop() {
        model.setName("Shop");
        addOrigin();
        addTypes();
        logical.stereotype = "layer";
        logical.addNote(note("to be\r\nreviewed\n"));
        addPackage(logical, "Empty");
        addClasses();
        addRelations();
    }

    KelModel model;

private:
    void addOrigin() {
        auto* origin = new KelMetadataOrigin;
        model.addMetadataOrigin(origin);
        origin->sourcePath = "/models/Shop.mdl";
        origin->sourceFormat = "MDL";
        origin->sourceEncoding = "UTF-8";
    }

    void addTypes() {
        integer->dataType = "SQL_INTEGER";
        model.addType(integer);
        auto* money = named<KelDerivedType>("Money");
        model.addType(money);
        money->dataType = "SQL_DECIMAL";
        money->length = 10;
        money->scale = 2;
        money->userDefined = true;
        money->addDerivedFromConcreteType(integer);
        money->addTypeValue(named<KelTypeValue>("none"));
        money->typeValues().first()->setValue("0");
    }

    void addClasses() {
        customer.categoryType = KelClassCategoryType::interface;
        order.stereotype = "entity";
        order.isAbstract = order.isPersistent = true;
        order.multiplicity = "1..n";
        order.space = 3;
        order.concurrency = 1;
        order.addNote(note("central"));
        order.addArgument(named<KelArgument>("T"));
        std::int16_t position = 0;
        for (const char* name : {"pub", "prot", "priv", "impl"}) {
            auto* attribute = named<KelAttribute>(name);
            attribute->visibility = position;
            attribute->position = position++;
            order.addAttribute(attribute);
        }
        KelAttribute& attribute = *order.getAttribute("pub", nullptr);
        attribute.addType(integer);
        attribute.initialValue = "7";
        attribute.isStatic = attribute.isDerived = true;
        attribute.containment = 0;
        order.getAttribute("prot", nullptr)->containment = 1;
        order.addAttribute(named<KelAttribute>("a"));
        auto* total = named<KelOperation>("total");
        order.addOperation(total);
        total->addReturnType(integer);
        total->isStatic = total->isVirtual = total->isFriend = true;
        total->concurrency = 3;
        for (const char* name : {"a", "b"}) {
            total->addArgument(named<KelArgument>(name));
        }
        total->arguments()[0]->addType(integer);
        total->arguments()[1]->initialValue = "0";
        total->arguments()[1]->position = 1;
        total->arguments()[1]->addNote(note("optional"));
        addKeys(attribute);
    }

    void addKeys(KelAttribute& attribute) {
        order.addKey(primary);
        primary->addPrimaryOfClass(&order);
        primary->addAttribute(&attribute);
        customer.addKey(foreign);
        foreign->addCandidateKey(primary);
        auto* map = named<KelAssociationRoleNameMap>("id");
        map->addForeignKey(foreign);
        map->addSourceAttribute(&attribute);
        map->addDestinationAttribute(order.getAttribute("priv", nullptr));
        foreign->addAttribute(order.getAttribute("prot", nullptr));
    }

    void addRelations() {
        auto& placed = addElement<KelAssociation>(logical, "placed");
        placed.isAggregation = true;
        KelAssociationRole& buyer = addRole(placed, "buyer", &customer);
        buyer.multiplicity = "1";
        buyer.containment = 0;
        buyer.isSource = buyer.isNavigable = true;
        buyer.addForeignKey(foreign);
        KelAssociationRole& other = addRole(placed, "", &order);
        other.isAggregate = other.isStatic = other.isFriend = true;
        other.containment = 1;
        auto& generalization = addElement<KelGeneralization>(logical, "");
        generalization.visibility = 1;
        generalization.isVirtual = generalization.isFriend = true;
        generalization.addSubtypeClass(&order);
        generalization.addSupertypeClass(&customer);
        addElement<KelRealization>(logical, "r").addRealizationClass(&order);
        auto& dependency = addElement<KelDependency>(logical, "d");
        dependency.addClientClass(&order);
        dependency.addSupplierClass(&customer);
        auto* diagram = named<KelClassDiagram>("Main");
        logical.addDiagram(diagram);
        diagram->addNote(note("drawn"));
        diagram->addModelElement(&placed);
        diagram->addModelElement(&order);
    }

    KelDesignPackage& logical = addPackage(model, "Logical View");
    KelClass& customer = addElement<KelClass>(logical, "Customer");
    KelClass& order = addElement<KelClass>(logical, "Order");
    KelBaseType* integer = named<KelBaseType>("int");
    KelCandidateKey* primary = named<KelCandidateKey>("pk");
    KelForeignKey* foreign = named<KelForeignKey>("fk");
};
