#include "builder/Qualifiers.h"

#include "builder/Attributes.h"
#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/placeAttribute.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"

#include <memory>

namespace rose {

namespace {

/// The primary key of the class, made with the qualifier's name if the class has none.
KelCandidateKey* primaryKeyOf(KelClass& qualified, const char* name) {
    if (KelCandidateKey* primary = qualified.getPrimaryKey(); primary != nullptr) {
        return primary;
    }
    auto made = std::make_unique<KelCandidateKey>();
    made->setName(name);
    made->userDefined = true;
    KelCandidateKey* key = attach(std::move(made), [&](KelCandidateKey* added) { return qualified.addKey(added); });
    key->addPrimaryOfClass(&qualified);
    return key;
}

/// A copy of the qualifier, to stand for it in the class at the other end. It belongs to nothing yet.
KelAttribute* createShadow(const KelAttribute& qualifier) {
    auto made = std::make_unique<KelAttribute>(qualifier);
    KelAttribute* shadow = made.get();
    keepUnattached(std::move(made));
    trace::made(*shadow);
    return shadow;
}

/// The first role of the association that is not the given one, or null.
KelAssociationRole* otherRole(const KelAssociationRole& role) {
    if (role.getAssociation() != nullptr) {
        for (KelAssociationRole* other : role.getAssociation()->associationRoles()) {
            if (other != &role) {
                return other;
            }
        }
    }
    return nullptr;
}

/// The class at the other end of the association, or null as long as there is none.
KelClass* classOf(const KelAssociationRole* role) {
    return role != nullptr ? role->getAssociatedClass() : nullptr;
}

/// A new foreign key for the qualified key, which the other end gets if it is known.
KelForeignKey* createForeignKey(KelCandidateKey& qualified, KelAssociationRole* other) {
    auto made = std::make_unique<KelForeignKey>();
    made->addCandidateKey(&qualified);
    KelForeignKey* key = attach(std::move(made), [&](KelForeignKey* added) {
        return classOf(other) != nullptr && classOf(other)->addKey(added);
    });
    if (other != nullptr) {
        other->addForeignKey(key);
    }
    return key;
}

} // namespace

void CreateKeyAttribute(char* name) {
    KelClass* qualified = classOf(state.aAssociationRole);
    if (qualified == nullptr) {
        trace::refused(KelImportReason::endWithoutClass);
        return;
    }
    state.aGeneral = nullptr;
    state.aRealization = nullptr;
    state.aDependency = nullptr;
    CreateAttribute(name);
    if (state.candKey == nullptr) {
        state.candKey = primaryKeyOf(*qualified, name);
    }
    state.aAttribute = placeAttribute(*state.aAttribute, *qualified);
    state.activeObject = state.aAttribute;
    state.candKey->addAttribute(state.aAttribute);

    state.shadowAttribute = createShadow(*state.aAttribute);
    KelAssociationRole* other = otherRole(*state.aAssociationRole);
    if (state.forKey == nullptr) {
        state.forKey = createForeignKey(*state.candKey, other);
    }
    if (KelClass* opposite = classOf(other); opposite != nullptr) {
        state.shadowAttribute = placeAttribute(*state.shadowAttribute, *opposite);
    }
    state.forKey->addAttribute(state.shadowAttribute);
}

} // namespace rose
