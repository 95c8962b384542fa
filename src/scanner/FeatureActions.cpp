#include "scanner/Actions.h"

#include "builder/Arguments.h"
#include "builder/Attributes.h"
#include "builder/BuilderState.h"
#include "builder/Qualifiers.h"
#include "builder/Types.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelOperation.h"
#include "scanner/actionParts.h"
#include "scanner/propertyCodes.h"

namespace rose {

namespace {

/// Sets a flag of the active object if it is of that class. The value of the line is not looked at.
template <class Class>
bool raise(const Reading& reading, KelElementType type, bool Class::*flag) {
    if (state.activeObject == nullptr || state.activeObject->elementType != type) {
        return false;
    }
    static_cast<Class*>(state.activeObject)->*flag = true;
    trace::changed(*state.activeObject, nullptr, unlessSaid(reading, "TRUE"));
    return true;
}

/// Tells the observer when no flag was set.
void tellUnless(bool isRaised) {
    if (!isRaised) {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

bool isActive(KelElementType type) {
    return state.activeObject != nullptr && state.activeObject->elementType == type;
}

} // namespace

void createAttribute(const Reading& reading) {
    give(state.InQualifier ? CreateKeyAttribute : CreateAttribute, reading);
}

void createArgument(const Reading& reading) {
    give(CreateArgument, reading);
}

void connectType(const Reading& reading) {
    give(ConnectType, reading);
}

void setInitialValue(const Reading& reading) {
    give(SetInitialValue, reading);
}

void setFriend(const Reading& reading) {
    tellUnless(raise(reading, KelElementType::generalization, &KelGeneralization::isFriend) ||
               raise(reading, KelElementType::associationRole, &KelAssociationRole::isFriend) ||
               raise(reading, KelElementType::operation, &KelOperation::isFriend));
}

void setStatic(const Reading& reading) {
    tellUnless(raise(reading, KelElementType::operation, &KelOperation::isStatic) ||
               raise(reading, KelElementType::associationRole, &KelAssociationRole::isStatic) ||
               raise(reading, KelElementType::attribute, &KelAttribute::isStatic));
}

void setDerived(const Reading& reading) {
    tellUnless(raise(reading, KelElementType::attribute, &KelAttribute::isDerived));
}

void setVirtual(const Reading& reading) {
    tellUnless(raise(reading, KelElementType::operation, &KelOperation::isVirtual) ||
               raise(reading, KelElementType::generalization, &KelGeneralization::isVirtual));
}

void setVisibility(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    const std::optional<std::int32_t> code = visibilityCode(reading.value);
    if (isActive(KelElementType::attribute) && state.aAttribute != nullptr) {
        state.aAttribute->visibility = code.value_or(otherVisibility);
        trace::changed(*state.aAttribute, nullptr, visibilityFault(reading.value));
    } else if (isActive(KelElementType::generalization) && state.aGeneral != nullptr && code.has_value()) {
        state.aGeneral->visibility = *code;
        trace::changed(*state.aGeneral);
    } else {
        trace::refused(isActive(KelElementType::generalization) ? KelImportReason::valueUnknown
                                                                : KelImportReason::nothingActive,
                       state.activeObject);
    }
}

void setContainment(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (isActive(KelElementType::attribute) && state.aAttribute != nullptr) {
        state.aAttribute->containment = containmentCode(reading.value);
        trace::changed(*state.aAttribute, nullptr, containmentFault(reading.value));
    } else if (isActive(KelElementType::associationRole) && state.aAssociationRole != nullptr) {
        state.aAssociationRole->containment = containmentCode(reading.value);
        trace::changed(*state.aAssociationRole, nullptr, containmentFault(reading.value));
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

} // namespace rose
