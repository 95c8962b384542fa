#include "host/model/KelMappingObject.h"

KelClassifierMap::KelClassifierMap() : KelMappingObject(KelElementType::classifierMap) {}

KelClassifierMap::~KelClassifierMap() {
    dissolve();
}

KelTransformation::KelTransformation() : KelMappingObject(KelElementType::transformation) {}

KelTransformation::~KelTransformation() {
    dissolve();
}
