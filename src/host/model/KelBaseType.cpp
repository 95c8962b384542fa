#include "host/model/KelBaseType.h"

KelBaseType::KelBaseType() : KelConcreteType(KelElementType::baseType) {}

KelBaseType::~KelBaseType() {
    dissolve();
}
