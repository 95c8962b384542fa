#include "host/model/KelAliasType.h"

#include "host/model/KelConcreteType.h"
#include "host/model/KelTypeValue.h"
#include "host/model/KelTypeValueByPosition.h"
#include "host/model/links/KelRelations.h"

KelAliasType::KelAliasType() : KelType(KelElementType::aliasType) {}

KelAliasType::~KelAliasType() {
    dissolve();
}

const KelString& KelAliasType::getDataType() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getDataType() : emptyString;
}

int KelAliasType::getLength() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getLength() : 0;
}

int KelAliasType::getScale() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getScale() : 0;
}

const KelString& KelAliasType::getInitialValue() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getInitialValue() : emptyString;
}

const KelString& KelAliasType::getLowerBound() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getLowerBound() : emptyString;
}

const KelString& KelAliasType::getUpperBound() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getUpperBound() : emptyString;
}

bool KelAliasType::getUserDefined() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getUserDefined() : false;
}

const KelString& KelAliasType::getNativeDataType() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getNativeDataType() : emptyString;
}

const KelString& KelAliasType::getUserDataType() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getUserDataType() : emptyString;
}

const KelString& KelAliasType::getNativeLogicalDataType() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getNativeLogicalDataType() : emptyString;
}

int KelAliasType::getTypeValueCount() const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getTypeValueCount() : 0;
}

const KelConcreteType* KelAliasType::getActualType() const {
    const KelType* at = this;
    while (at != nullptr && at->elementType == KelElementType::aliasType) {
        at = static_cast<const KelAliasType*>(at)->getType();
    }
    return static_cast<const KelConcreteType*>(at);
}

bool KelAliasType::containsTypeValue(const KelTypeValue* value) const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr && actual->containsTypeValue(value);
}

KelTypeValue* KelAliasType::getTypeValue(int index) const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getTypeValue(index) : nullptr;
}

KelTypeValue* KelAliasType::getTypeValue(const KelString& name, int* index) const {
    const KelConcreteType* actual = getActualType();
    return actual != nullptr ? actual->getTypeValue(name, index) : nullptr;
}

void KelAliasType::getTypeValueByPosition(KelTypeValueByPosition& values) const {
    values.empty();
    if (const KelConcreteType* actual = getActualType(); actual != nullptr) {
        actual->getTypeValueByPosition(values);
    }
}

bool KelAliasType::addType(KelType* object) {
    const KelType* at = object;
    while (at != nullptr && at != this && at->elementType == KelElementType::aliasType) {
        at = static_cast<const KelAliasType*>(at)->getType();
    }
    return at != this && KelRelations::aliasOf.set(this, object);
}

KelType* KelAliasType::getType() const {
    return static_cast<KelType*>(type_.get());
}
