#include "host/model/KelFeature.h"

#include "host/model/KelType.h"
#include "host/model/links/KelRelations.h"

KelFeature::~KelFeature() {
    dissolve();
}

bool KelFeature::addType(KelType* object) {
    return KelRelations::featureType.set(this, object);
}

KelType* KelFeature::getType() const {
    return static_cast<KelType*>(type_.get());
}
