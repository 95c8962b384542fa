#include "builder/Attributes.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"

#include <memory>

namespace rose {

KelAttribute* placeAttribute(KelAttribute& attribute, KelClass& owner) {
    if (owner.addAttribute(&attribute)) {
        attribute.position = static_cast<std::int16_t>(owner.getAttributeCount() - 1);
        return &attribute;
    }
    KelAttribute* standIn = owner.getAttribute(attribute.getName(), nullptr);
    if (standIn == nullptr || standIn == &attribute) {
        return &attribute; // refused for having a class already
    }
    trace::replaced(attribute, KelImportReason::nameTaken, *standIn);
    delete &attribute;
    return standIn;
}

namespace {

constexpr int privateVisibility = 2;

} // namespace

void CreateAttribute(char* name) {
    report(QEV_RRSE::ROS_I_CREATING_ATTRIBUTE, name);
    state.shadowAttribute = nullptr;
    auto made = std::make_unique<KelAttribute>();
    made->setName(name);
    made->visibility = privateVisibility;
    KelClass* owner = state.InQualifier ? nullptr : state.aClass;
    const auto offer = [owner](KelAttribute* added) { return owner != nullptr && owner->addAttribute(added); };
    state.aAttribute =
        attach(std::move(made), offer, owner != nullptr ? KelImportReason::nameTaken : KelImportReason::noClass);
    if (trace::isOn() && owner != nullptr && state.aAttribute->getAssociatedClass() == nullptr) {
        trace::refused(KelImportReason::nameTaken, state.aAttribute,
                       owner->getAttribute(state.aAttribute->getName(), nullptr));
    }
    if (owner != nullptr) {
        // A refused attribute gets a position, too.
        state.aAttribute->position = static_cast<std::int16_t>(owner->getAttributeCount() - 1);
    }
    state.InNoteView = false;
    state.activeObject = state.aAttribute;
}

void SetInitialValue(char* text) {
    if (isActive(KelElementType::attribute)) {
        state.aAttribute->initialValue = text;
        trace::changed(*state.aAttribute);
        if (state.shadowAttribute != nullptr) {
            state.shadowAttribute->initialValue = text;
            trace::changed(*state.shadowAttribute, nullptr, KelImportReason::shadow);
        }
    } else if (isActive(KelElementType::argument)) {
        state.aArgument->initialValue = text;
        trace::changed(*state.aArgument);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

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

/// A copy of the qualifier for the class at the other end. It belongs to nothing yet.
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
    state.clearRelationships();
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
