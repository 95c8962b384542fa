#include "host/model/KelType.h"

#include "host/model/KelArgument.h"
#include "host/model/KelFeature.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/links/KelRelations.h"

KelType::~KelType() {
    dissolve();
}

KelModel* KelType::getModel() const {
    return static_cast<KelModel*>(model_.get());
}

bool KelType::addFeature(KelFeature* object) {
    return KelRelations::featureType.link(object, this);
}

bool KelType::addArgument(KelArgument* object) {
    return KelRelations::argumentType.link(object, this);
}

bool KelType::addOperation(KelOperation* object) {
    return KelRelations::returnType.link(object, this);
}

bool KelType::removeFeature(int index) noexcept {
    return KelRelations::featureType.unlink(features()[index], this);
}

bool KelType::removeArgument(int index) noexcept {
    return KelRelations::argumentType.unlink(arguments()[index], this);
}

bool KelType::removeOperation(int index) noexcept {
    return KelRelations::returnType.unlink(operations()[index], this);
}
