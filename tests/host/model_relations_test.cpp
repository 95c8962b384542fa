// Every relation of the repository: what it links, from which operations, and what it refuses.

#include "ModelClasses.h"
#include "host/model/KelAliasType.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
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

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace {

using Objects = std::vector<KelObject*>;

/// An `add...` operation; `onHolder` says whether it is the holder's.
struct Add {
    std::function<bool(KelObject* holder, KelObject* target)> call;
    bool onHolder;
};
using Adds = std::vector<Add>;
using See = std::function<Objects(const KelObject&)>;

template <class Holder, class Target>
Add add(bool (Holder::*operation)(Target*)) {
    return {[=](KelObject* holder, KelObject* target) {
                return (static_cast<Holder*>(holder)->*operation)(static_cast<Target*>(target));
            },
            true};
}

template <class Target, class Holder>
Add addTo(bool (Target::*operation)(Holder*)) {
    return {[=](KelObject* holder, KelObject* target) {
                return (static_cast<Target*>(target)->*operation)(static_cast<Holder*>(holder));
            },
            false};
}

template <class T, class Other>
See see(Other* (T::*one)() const) {
    return [=](const KelObject& object) {
        Other* other = (static_cast<const T&>(object).*one)();
        return other != nullptr ? Objects{other} : Objects{};
    };
}

template <class T, class Other>
See see(KelLinks<Other> (T::*many)() const) {
    return [=](const KelObject& object) {
        Objects others;
        for (Other* other : (static_cast<const T&>(object).*many)()) {
            others.push_back(other);
        }
        return others;
    };
}

struct Row {
    KelElementType holderType;
    const char* name;
    KelElementType targetType;
    KelHold hold;
    Adds adds;
    See targets; // of a holder
    See holders; // of a target
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << static_cast<int>(row.holderType) << " " << row.name;
}

using enum KelElementType;
using enum KelHold;

// clang-format off
const Row rows[] = {
    {element, "notes", note, owns, {add(&KelElement::addNote)}, see(&KelElement::notes), see(&KelNote::getElement)},
    {model, "types", type, owns, {add(&KelModel::addType)}, see(&KelModel::types), see(&KelType::getModel)},
    {model, "metadataOrigins", metadataOrigin, owns, {add(&KelModel::addMetadataOrigin)}, see(&KelModel::metadataOrigins), see(&KelMetadataOrigin::getModel)},
    {package, "childPackages", package, owns, {add(&KelPackage::addChildPackage)}, see(&KelPackage::childPackages), see(&KelPackage::getParentPackage)},
    {designPackage, "modelElements", modelElement, owns, {add(&KelDesignPackage::addModelElement)}, see(&KelDesignPackage::modelElements), see(&KelModelElement::getDesignPackage)},
    {designPackage, "diagrams", diagram, owns, {add(&KelDesignPackage::addDiagram)}, see(&KelDesignPackage::diagrams), see(&KelDiagram::getDesignPackage)},
    {classObject, "attributes", attribute, owns, {add(&KelClass::addAttribute)}, see(&KelClass::attributes), see(&KelAttribute::getAssociatedClass)},
    {classObject, "operations", operation, owns, {add(&KelClass::addOperation)}, see(&KelClass::operations), see(&KelOperation::getAssociatedClass)},
    {classObject, "arguments", argument, owns, {add(&KelClass::addArgument)}, see(&KelClass::arguments), see(&KelArgument::getAssociatedClass)},
    {classObject, "keys", key, owns, {add(&KelClass::addKey), addTo(&KelKey::addAssociatedClass)}, see(&KelClass::keys), see(&KelKey::getAssociatedClass)},
    {operation, "arguments", argument, owns, {add(&KelOperation::addArgument)}, see(&KelOperation::arguments), see(&KelArgument::getOperation)},
    {association, "associationRoles", associationRole, owns, {add(&KelAssociation::addAssociationRole)}, see(&KelAssociation::associationRoles), see(&KelAssociationRole::getAssociation)},
    {derivedType, "typeValues", typeValue, owns, {add(&KelDerivedType::addTypeValue)}, see(&KelDerivedType::typeValues), see(&KelTypeValue::getDerivedType)},
    {foreignKey, "roleNameMaps", associationRoleNameMap, owns, {addTo(&KelAssociationRoleNameMap::addForeignKey)}, see(&KelForeignKey::roleNameMaps), see(&KelAssociationRoleNameMap::getForeignKey)},
    {diagram, "modelElements", modelElement, refers, {add(&KelDiagram::addModelElement), addTo(&KelModelElement::addDiagram)}, see(&KelDiagram::modelElements), see(&KelModelElement::diagrams)},
    {feature, "type", type, refers, {add(&KelFeature::addType), addTo(&KelType::addFeature)}, see(&KelFeature::getType), see(&KelType::features)},
    {argument, "type", type, refers, {add(&KelArgument::addType), addTo(&KelType::addArgument)}, see(&KelArgument::getType), see(&KelType::arguments)},
    {operation, "returnType", type, refers, {add(&KelOperation::addReturnType), addTo(&KelType::addOperation)}, see(&KelOperation::getReturnType), see(&KelType::operations)},
    {derivedType, "derivedFrom", concreteType, refers, {add(&KelDerivedType::addDerivedFromConcreteType)}, see(&KelDerivedType::getDerivedFromConcreteType), see(&KelConcreteType::derivedTypes)},
    {aliasType, "aliasOf", type, refers, {add(&KelAliasType::addType)}, see(&KelAliasType::getType), see(&KelType::aliasTypes)},
    {key, "attributes", attribute, refers, {add(&KelKey::addAttribute), addTo(&KelAttribute::addKey)}, see(&KelKey::attributes), see(&KelAttribute::keys)},
    {candidateKey, "primaryOfClass", classObject, refers, {add(&KelCandidateKey::addPrimaryOfClass)}, see(&KelCandidateKey::getPrimaryOfClass), see(&KelClass::getPrimaryKey)},
    {foreignKey, "candidateKey", candidateKey, refers, {add(&KelForeignKey::addCandidateKey)}, see(&KelForeignKey::getCandidateKey), see(&KelCandidateKey::foreignKeys)},
    {associationRole, "foreignKeys", foreignKey, refersDeletes, {add(&KelAssociationRole::addForeignKey)}, see(&KelAssociationRole::foreignKeys), see(&KelForeignKey::associationRoles)},
    {associationRole, "associatedClass", classObject, refers, {add(&KelAssociationRole::addAssociatedClass)}, see(&KelAssociationRole::getAssociatedClass), see(&KelClass::associationRoles)},
    {generalization, "subtypeClasses", classObject, refers, {add(&KelGeneralization::addSubtypeClass)}, see(&KelGeneralization::subtypeClasses), see(&KelClass::generalizationsAsSubtype)},
    {generalization, "supertypeClasses", classObject, refers, {add(&KelGeneralization::addSupertypeClass)}, see(&KelGeneralization::supertypeClasses), see(&KelClass::generalizationsAsSupertype)},
    {realization, "realizationClass", classObject, refers, {add(&KelRealization::addRealizationClass)}, see(&KelRealization::getRealizationClass), see(&KelClass::realizationsAsRealization)},
    {realization, "specificationClass", classObject, refers, {add(&KelRealization::addSpecificationClass)}, see(&KelRealization::getSpecificationClass), see(&KelClass::realizationsAsSpecification)},
    {dependency, "clientClass", classObject, refers, {add(&KelDependency::addClientClass)}, see(&KelDependency::getClientClass), see(&KelClass::dependenciesAsClient)},
    {dependency, "supplierClass", classObject, refers, {add(&KelDependency::addSupplierClass)}, see(&KelDependency::getSupplierClass), see(&KelClass::dependenciesAsSupplier)},
    {associationRoleNameMap, "sourceAttribute", attribute, refers, {add(&KelAssociationRoleNameMap::addSourceAttribute)}, see(&KelAssociationRoleNameMap::getSourceAttribute), see(&KelAttribute::roleNameMapsAsSource)},
    {associationRoleNameMap, "destinationAttribute", attribute, refers, {add(&KelAssociationRoleNameMap::addDestinationAttribute)}, see(&KelAssociationRoleNameMap::getDestinationAttribute), see(&KelAttribute::roleNameMapsAsDestination)},
};
// clang-format on

int allLinks(const KelObject& object) {
    int links = 0;
    for (const KelRelationEnd& end : object.getMetaClass().ends()) {
        links += end.relation->count(object, end.isHolder);
    }
    return links;
}

/// Two objects for each end, made by this test and deleted by it, targets first: they then leave their owners.
class ModelRelation : public testing::TestWithParam<Row> {
protected:
    ModelRelation() { secondTarget_->setName("another"); }

    [[nodiscard]] Objects targets(const KelObject& holder) const { return GetParam().targets(holder); }
    [[nodiscard]] Objects holders(const KelObject& target) const { return GetParam().holders(target); }

    const KelRelation& relation_ = relationOf(GetParam().holderType, GetParam().name);
    std::unique_ptr<KelObject> holder_ = makeObject(GetParam().holderType);
    std::unique_ptr<KelObject> secondHolder_ = makeObject(GetParam().holderType);
    std::unique_ptr<KelObject> target_ = makeObject(GetParam().targetType);
    std::unique_ptr<KelObject> secondTarget_ = makeObject(GetParam().targetType);
    const bool holdsMany_ = relation_.holderEnd.many != nullptr;
    const bool heldByMany_ = relation_.targetEnd.many != nullptr;
};

TEST_P(ModelRelation, LinksBothEndsAndNothingElse) {
    EXPECT_EQ(relation_.targetType, GetParam().targetType);
    EXPECT_EQ(relation_.hold, GetParam().hold);
    for (const Add& operation : GetParam().adds) {
        for (const auto& holder : makeEach(relation_.holderType)) {
            for (const auto& target : makeEach(relation_.targetType)) {
                EXPECT_TRUE(operation.call(holder.get(), target.get()));
                EXPECT_EQ(targets(*holder), Objects{target.get()});
                EXPECT_EQ(holders(*target), Objects{holder.get()});
                EXPECT_EQ(allLinks(*holder) + allLinks(*target), 2);
                EXPECT_EQ(target->getParent(), relation_.hold == owns ? holder.get() : nullptr);
                EXPECT_TRUE(relation_.unlink(holder.get(), target.get()));
                EXPECT_FALSE(relation_.unlink(holder.get(), target.get()));
                EXPECT_EQ(allLinks(*holder) + allLinks(*target), 0);
            }
        }
    }
}

TEST_P(ModelRelation, RefusesNothingAndTheSameAgain) {
    for (const Add& operation : GetParam().adds) {
        EXPECT_FALSE(operation.onHolder ? operation.call(holder_.get(), nullptr)
                                        : operation.call(nullptr, target_.get()));
        ASSERT_TRUE(operation.call(holder_.get(), target_.get()));
        // Setting the one object that an end refers to once more is no mistake.
        const bool isSet = relation_.hold == refers && !(operation.onHolder ? holdsMany_ : heldByMany_);
        EXPECT_EQ(operation.call(holder_.get(), target_.get()), isSet);
        EXPECT_EQ(targets(*holder_), Objects{target_.get()});
        EXPECT_EQ(holders(*target_), Objects{holder_.get()});
        ASSERT_TRUE(relation_.unlink(holder_.get(), target_.get()));
    }
}

TEST_P(ModelRelation, TheFirstOwnerKeepsAndALaterReferenceReplaces) {
    for (const Add& operation : GetParam().adds) {
        ASSERT_TRUE(operation.call(holder_.get(), target_.get()));
        const bool owned = relation_.hold == owns;
        EXPECT_EQ(operation.call(secondHolder_.get(), target_.get()), !owned);
        EXPECT_EQ(holders(*target_), owned         ? Objects{holder_.get()}
                                     : heldByMany_ ? (Objects{holder_.get(), secondHolder_.get()})
                                                   : Objects{secondHolder_.get()});
        EXPECT_EQ(targets(*holder_), owned || heldByMany_ ? Objects{target_.get()} : Objects{});

        EXPECT_TRUE(operation.call(secondHolder_.get(), secondTarget_.get()));
        const bool first = !owned && holdsMany_;
        EXPECT_EQ(targets(*secondHolder_),
                  first ? (Objects{target_.get(), secondTarget_.get()}) : Objects{secondTarget_.get()});
        relation_.clear(*target_, false);
        relation_.clear(*secondTarget_, false);
        EXPECT_EQ(allLinks(*holder_) + allLinks(*secondHolder_), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ModelRelation, testing::ValuesIn(rows));

TEST(ModelRelations, TheTableAboveIsAllOfThem) {
    EXPECT_EQ(std::size(rows), KelRelations::all().size());
}

TEST(ModelRelations, APackageIsNeverInsideItself) {
    KelDesignPackage packages[4];
    for (int index = 0; index < 3; ++index) {
        ASSERT_TRUE(packages[2 - index].addChildPackage(&packages[3 - index]));
    }
    for (KelDesignPackage& inner : packages) {
        EXPECT_FALSE(inner.addChildPackage(&packages[0]));
    }
    EXPECT_EQ(packages[0].getParentPackage(), nullptr);
    while (packages[0].childPackages().count() > 0) { // they are not on the heap
        for (KelDesignPackage& each : packages) {
            each.removeAggregationAssembly();
        }
    }
}

TEST(ModelRelations, RemovingByIndex) {
    KelModel model;
    KelClassDiagram diagrams[2];
    KelClass drawn;
    KelAttribute typed;
    auto* type = new KelDerivedType;
    model.addType(type);
    type->addFeature(&typed);
    EXPECT_FALSE(type->removeFeature(1) || type->removeFeature(-1));
    EXPECT_TRUE(type->removeFeature(0));
    EXPECT_EQ(typed.getType(), nullptr);
    diagrams[0].addModelElement(&drawn);
    diagrams[1].addModelElement(&drawn);
    EXPECT_TRUE(drawn.removeDiagram(0));
    EXPECT_EQ(drawn.diagrams().first(), &diagrams[1]);
    EXPECT_FALSE(drawn.removeDesignPackage());
    EXPECT_TRUE(model.removeType(0));
    EXPECT_EQ(type->getModel(), nullptr);
    delete type;
}

} // namespace
