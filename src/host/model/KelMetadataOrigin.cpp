#include "host/model/KelMetadataOrigin.h"

#include "host/model/KelModel.h"

KelMetadataOrigin::KelMetadataOrigin() : KelElement(KelElementType::metadataOrigin) {}

KelMetadataOrigin::~KelMetadataOrigin() {
    dissolve();
}

KelModel* KelMetadataOrigin::getModel() const {
    return static_cast<KelModel*>(model_.get());
}
