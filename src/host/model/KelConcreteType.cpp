#include "host/model/KelConcreteType.h"

#include "host/model/KelTypeValueByPosition.h"

KelConcreteType::~KelConcreteType() {
    dissolve();
}

bool KelConcreteType::containsTypeValue(const KelTypeValue* /*value*/) const {
    return false;
}

KelTypeValue* KelConcreteType::getTypeValue(int /*index*/) const {
    return nullptr;
}

KelTypeValue* KelConcreteType::getTypeValue(const KelString& /*name*/, int* /*index*/) const {
    return nullptr;
}

void KelConcreteType::getTypeValueByPosition(KelTypeValueByPosition& values) const {
    values.empty();
}
