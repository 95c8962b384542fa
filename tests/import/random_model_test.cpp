// Random model files: what must hold of every model that an import makes.

#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelKey.h"
#include "host/model/KelTraversalOperation.h"
#include "support/ImportedModel.h"
#include "support/RandomModelFile.h"
#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using Kind = RandomModelFile::Kind;

/// Looks at what validation is to leave in the packages of the file.
class Looking final : public KelTraversalOperation {
public:
    explicit Looking(bool isSound) : isSound_(isSound) {}

    void post_process(KelObject* object, void* /*userData*/) override {
        switch (object->elementType) {
        case KelElementType::association:
            look(static_cast<KelAssociation&>(*object));
            break;
        case KelElementType::generalization:
            look(static_cast<KelGeneralization&>(*object));
            break;
        case KelElementType::classObject:
            look(static_cast<KelClass&>(*object));
            break;
        case KelElementType::derivedType:
            EXPECT_TRUE(!isSound_ || object->isReferenced()) << object->getName().text();
            break;
        default:
            break;
        }
    }

    int associations = 0;

private:
    void look(const KelAssociation& association) {
        ++associations;
        EXPECT_GE(association.associationRoles().count(), 2);
        for (const KelAssociationRole* role : association.associationRoles()) {
            EXPECT_NE(role->getAssociatedClass(), nullptr);
            EXPECT_FALSE(role->getName().view().starts_with("$UNNAMED$"));
            EXPECT_EQ(role->isSource, role == association.associationRoles().first());
        }
    }

    static void look(const KelGeneralization& generalization) {
        EXPECT_GT(generalization.subtypeClasses().count(), 0);
        EXPECT_GT(generalization.supertypeClasses().count(), 0);
    }

    void look(const KelClass& owner) {
        const bool isRead = owner.getDesignPackage()->getName() != "Use Case Classes in Class Diagrams";
        std::set<int> positions;
        for (const KelAttribute* attribute : owner.attributes()) {
            positions.insert(attribute->position);
            if (isRead) {
                EXPECT_NE(attribute->getType(), nullptr);
                look(*attribute, owner);
            }
        }
        if (isSound_ && !owner.attributes().isEmpty()) {
            // Nothing has been taken out again, so each has its place.
            EXPECT_EQ(static_cast<int>(positions.size()), owner.getAttributeCount());
            EXPECT_EQ(*positions.begin(), 0);
            EXPECT_EQ(*positions.rbegin(), owner.getAttributeCount() - 1);
        }
    }

    void look(const KelAttribute& attribute, const KelClass& owner) const {
        // One of a foreign key may also have joined the class key; so may those of an aggregation, afterwards.
        const bool isShared = attribute.keys().count() == 2 && attribute.keys()[1] == owner.keys().first();
        EXPECT_TRUE(!isSound_ || attribute.keys().count() < 2 || isShared) << attribute.getName().text();
    }

    const bool isSound_;
};

void importRandomModel(unsigned int seed, Kind kind, const ImportedModel::Choices& choices) {
    const RandomModelFile file(seed, kind);
    ImportedModel imported = ImportedModel::ofBody(file.getBody(), choices);
    ASSERT_EQ(imported.failure, "");
    ASSERT_EQ(brokenInvariant(imported.model), "");
    Looking looking(kind == Kind::sound);
    imported.model.depthTraversal(looking, nullptr);
    if (kind == Kind::sound) {
        EXPECT_EQ(looking.associations, file.getAssociationCount());
    }
    EXPECT_EQ(ImportedModel::ofBody(file.getBody(), choices).json(), imported.json());
}

TEST(RandomModel, KeepsWhatMustHold) {
    for (unsigned int seed = 1; seed <= 100 && !testing::Test::HasFailure(); ++seed) {
        for (const Kind kind : {Kind::wild, Kind::sound}) {
            for (const char* types : {"C++", "Oracle 7.x & 8"}) {
                SCOPED_TRACE((kind == Kind::sound ? "sound file " : "wild file ") + std::to_string(seed) + ", " +
                             types);
                importRandomModel(seed, kind, {.types = types});
            }
        }
    }
}

} // namespace
