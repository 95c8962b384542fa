#include "host/model/KelDerivedType.h"

#include "host/model/KelTypeValue.h"
#include "host/model/KelTypeValueByPosition.h"
#include "host/model/links/KelRelations.h"

KelDerivedType::KelDerivedType() : KelConcreteType(KelElementType::derivedType) {}

KelDerivedType::~KelDerivedType() {
    dissolve();
}

bool KelDerivedType::containsTypeValue(const KelTypeValue* object) const {
    return object != nullptr && typeValues().holds(*object);
}

KelTypeValue* KelDerivedType::getTypeValue(int index) const {
    return typeValues()[index];
}

KelTypeValue* KelDerivedType::getTypeValue(const KelString& name, int* index) const {
    int found = 0;
    KelTypeValue* named = typeValues().findNamed(name, &found);
    if (named != nullptr && index != nullptr) {
        *index = found;
    }
    return named;
}

void KelDerivedType::getTypeValueByPosition(KelTypeValueByPosition& values) const {
    values.empty();
    for (const KelTypeValue* value : typeValues()) {
        values.addElement(value, true);
    }
}

bool KelDerivedType::addDerivedFromConcreteType(KelConcreteType* object) {
    return KelRelations::derivedFrom.set(this, object);
}

KelConcreteType* KelDerivedType::getDerivedFromConcreteType() const {
    return static_cast<KelConcreteType*>(derivedFrom_.get());
}

bool KelDerivedType::addTypeValue(KelTypeValue* object) {
    return KelRelations::typeValues.link(this, object);
}

bool KelDerivedType::removeTypeValue(KelTypeValue* object) noexcept {
    return KelRelations::typeValues.unlink(this, object);
}
