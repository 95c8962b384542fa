#include "host/model/KelTypeValue.h"

#include "host/model/KelDerivedType.h"

KelTypeValue::KelTypeValue() : KelModelObject(KelElementType::typeValue) {}

KelTypeValue::~KelTypeValue() {
    dissolve();
}

KelDerivedType* KelTypeValue::getDerivedType() const {
    return static_cast<KelDerivedType*>(derivedType_.get());
}
