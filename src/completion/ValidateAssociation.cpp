#include "builder/Associations.h"
#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "completion/ValidateModel.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"

#include <memory>

namespace rose {

namespace {

/// Whether a class of that name still waits. Logs the name each time.
bool findClassInRemainingFoodStuffs(const KelString& name) {
    report(QEV_RRSE::ROS_I_CLASS_NAME_TO_BE_FOUND, name.view());
    return state.toBeClasses.findFirst(name) != nullptr;
}

bool isOrphan(const KelAssociationRole& role) {
    const KelClass* associated = role.getAssociatedClass();
    return associated == nullptr || findClassInRemainingFoodStuffs(associated->getName());
}

/// Detaches the association when one of its roles has no class in a package; returns whether it did.
bool detachOrphan(KelAssociation& association) {
    for (const KelAssociationRole* role : association.associationRoles()) {
        if (isOrphan(*role)) {
            while (association.removeDiagram(association.diagrams().count() - 1)) {
            }
            association.removeDesignPackage();
            return true;
        }
    }
    return false;
}

void remove(KelObject& object, KelImportReason why) {
    trace::removing(object, why);
    delete &object;
}

/// Deletes the qualifiers of the foreign key and of its candidate key, and the candidate key when it is empty then.
void deleteQualifiers(KelForeignKey& key) {
    while (KelAttribute* shadow = key.attributes().first()) {
        const KelCandidateKey* candidate = key.getCandidateKey();
        KelAttribute* qualifier = candidate != nullptr ? candidate->attributes().findNamed(shadow->getName()) : nullptr;
        if (qualifier != shadow && qualifier != nullptr) {
            remove(*qualifier, KelImportReason::withOwner);
        }
        remove(*shadow, KelImportReason::withOwner);
    }
    if (KelCandidateKey* candidate = key.getCandidateKey(); candidate != nullptr && candidate->attributes().isEmpty()) {
        remove(*candidate, KelImportReason::withOwner);
    }
}

void deleteAssociation(KelAssociation* association, KelImportReason why) {
    for (const KelAssociationRole* role : association->associationRoles()) {
        if (KelForeignKey* key = role->foreignKeys().first(); key != nullptr) {
            deleteQualifiers(*key);
        }
    }
    remove(*association, why);
}

/// The first key of the class; a primary key is made if it has none.
KelKey* classKeyOf(KelClass& owner) {
    if (KelKey* key = owner.keys().first(); key != nullptr) {
        return key;
    }
    auto made = std::make_unique<KelCandidateKey>();
    made->userDefined = true;
    KelCandidateKey* key = attach(std::move(made), [&](KelCandidateKey* added) { return owner.addKey(added); });
    key->addPrimaryOfClass(&owner);
    trace::repaired(owner, KelImportReason::keyForAggregation, key);
    return key;
}

/// Makes the attributes of the foreign key part of the key of their class.
void addToClassKey(const KelForeignKey& key) {
    const KelAttribute* first = key.attributes().first();
    KelClass* owner = first != nullptr ? first->getAssociatedClass() : nullptr;
    if (owner == nullptr) {
        return;
    }
    KelKey* classKey = classKeyOf(*owner);
    for (KelAttribute* attribute : key.attributes()) {
        classKey->addAttribute(attribute);
        trace::repaired(*classKey, KelImportReason::keyForAggregation, attribute);
    }
}

} // namespace

bool ValidateAssociation(KelAssociation* association) {
    const auto roles = association->associationRoles();
    const bool isOrphan = detachOrphan(*association);
    const bool hasTwoEnds = roles.count() >= 2;
    if (hasTwoEnds) {
        setSourceProperty(roles[0], roles[1]);
    }
    if (isOrphan || !hasTwoEnds) {
        deleteAssociation(association, hasTwoEnds ? KelImportReason::endWithoutClass : KelImportReason::tooFewEnds);
        return true;
    }
    for (KelAssociationRole* role : roles) {
        if (const KelForeignKey* key = role->foreignKeys().first(); association->isAggregation && key != nullptr) {
            addToClassKey(*key);
        }
        if (role->getName().view().starts_with(unnamedMark)) {
            role->setName(emptyString);
            trace::repaired(*role, KelImportReason::nameCleared);
        }
    }
    return false;
}

} // namespace rose
