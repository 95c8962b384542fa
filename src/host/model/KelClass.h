#pragma once

#include "host/model/KelClassCategoryType.h"
#include "host/model/KelClassifier.h"

class KelArgument;
class KelAssociationRole;
class KelAttribute;
class KelCandidateKey;
class KelDependency;
class KelGeneralization;
class KelKey;
class KelOperation;
class KelRealization;

/// A class. Owns its attributes (in name order), operations, template arguments and keys.
///
/// Relationships, roles and diagrams refer to it. When it is deleted they remain, without that class.
class KEL_API KelClass final : public KelClassifier {
public:
    KelClass();
    ~KelClass() override;

    /// Also refuses an attribute whose name the class already has.
    bool addAttribute(KelAttribute* attribute);
    [[nodiscard]] int getAttributeCount() const { return attributes_.count(); }
    /// The attribute at `index` in name order, or null when there is none.
    [[nodiscard]] KelAttribute* getAttribute(int index) const;
    /// The first attribute of that name, or null. Its index is stored in `index` unless that is null.
    [[nodiscard]] KelAttribute* getAttribute(const KelString& name, int* index) const;
    [[nodiscard]] KelLinks<KelAttribute> attributes() const { return KelLinks<KelAttribute>(attributes_); }

    bool addOperation(KelOperation* operation);
    [[nodiscard]] KelLinks<KelOperation> operations() const { return KelLinks<KelOperation>(operations_); }

    /// Accepts arguments whether or not the class is a template.
    bool addArgument(KelArgument* argument);
    [[nodiscard]] KelLinks<KelArgument> arguments() const { return KelLinks<KelArgument>(arguments_); }

    bool addKey(KelKey* key);
    [[nodiscard]] KelLinks<KelKey> keys() const { return KelLinks<KelKey>(keys_); }
    /// The candidate key that is this class's primary key, or null.
    [[nodiscard]] KelCandidateKey* getPrimaryKey() const;

    /// The objects that refer to this class, each kind in the order in which they were linked to it.
    [[nodiscard]] KelLinks<KelAssociationRole> associationRoles() const {
        return KelLinks<KelAssociationRole>(associationRoles_);
    }
    [[nodiscard]] KelLinks<KelGeneralization> generalizationsAsSubtype() const {
        return KelLinks<KelGeneralization>(generalizationsAsSubtype_);
    }
    [[nodiscard]] KelLinks<KelGeneralization> generalizationsAsSupertype() const {
        return KelLinks<KelGeneralization>(generalizationsAsSupertype_);
    }
    [[nodiscard]] KelLinks<KelRealization> realizationsAsRealization() const {
        return KelLinks<KelRealization>(realizationsAsRealization_);
    }
    [[nodiscard]] KelLinks<KelRealization> realizationsAsSpecification() const {
        return KelLinks<KelRealization>(realizationsAsSpecification_);
    }
    [[nodiscard]] KelLinks<KelDependency> dependenciesAsClient() const {
        return KelLinks<KelDependency>(dependenciesAsClient_);
    }
    [[nodiscard]] KelLinks<KelDependency> dependenciesAsSupplier() const {
        return KelLinks<KelDependency>(dependenciesAsSupplier_);
    }

    bool isAbstract = false;   // has no objects except those of its subclasses
    bool isPersistent = false; // its objects outlive the program
    std::int32_t space = 0;    // the number that the file has for it; not interpreted
    KelClassCategoryType categoryType = KelClassCategoryType::classObject;
    std::int32_t concurrency = 0; // by the file's text: 1 "Guarded", 0 "Seqtial" or none, 3 any other
    KelString stereotype;
    KelString multiplicity; // of the class itself; as `KelAssociationRole::multiplicity`

private:
    friend struct KelRelations;
    KelMany attributes_{KelOrder::byName};
    KelMany operations_;
    KelMany arguments_;
    KelMany keys_;
    KelOne primaryKey_;
    KelMany associationRoles_;
    KelMany generalizationsAsSubtype_;
    KelMany generalizationsAsSupertype_;
    KelMany realizationsAsRealization_;
    KelMany realizationsAsSpecification_;
    KelMany dependenciesAsClient_;
    KelMany dependenciesAsSupplier_;
};
