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
void raise(KelElementType type, bool Class::*flag) {
    if (activeObject != nullptr && activeObject->elementType == type) {
        static_cast<Class*>(activeObject)->*flag = true;
    }
}

bool isActive(KelElementType type) {
    return activeObject != nullptr && activeObject->elementType == type;
}

} // namespace

void createAttribute(const Reading& reading) {
    give(InQualifier ? CreateKeyAttribute : CreateAttribute, reading);
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

void setFriend(const Reading&) {
    raise(KelElementType::generalization, &KelGeneralization::isFriend);
    raise(KelElementType::associationRole, &KelAssociationRole::isFriend);
    raise(KelElementType::operation, &KelOperation::isFriend);
}

void setStatic(const Reading&) {
    raise(KelElementType::operation, &KelOperation::isStatic);
    raise(KelElementType::associationRole, &KelAssociationRole::isStatic);
    raise(KelElementType::attribute, &KelAttribute::isStatic);
}

void setDerived(const Reading&) {
    raise(KelElementType::attribute, &KelAttribute::isDerived);
}

void setVirtual(const Reading&) {
    raise(KelElementType::operation, &KelOperation::isVirtual);
    raise(KelElementType::generalization, &KelGeneralization::isVirtual);
}

void setVisibility(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    const std::optional<std::int32_t> code = visibilityCode(reading.value);
    if (isActive(KelElementType::attribute) && aAttribute != nullptr) {
        aAttribute->visibility = code.value_or(otherVisibility);
    } else if (isActive(KelElementType::generalization) && aGeneral != nullptr && code.has_value()) {
        aGeneral->visibility = *code;
    }
}

void setContainment(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (isActive(KelElementType::attribute) && aAttribute != nullptr) {
        aAttribute->containment = containmentCode(reading.value);
    } else if (isActive(KelElementType::associationRole) && aAssociationRole != nullptr) {
        aAssociationRole->containment = containmentCode(reading.value);
    }
}

} // namespace rose
