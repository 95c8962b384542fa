#include "host/model/KelModel.h"

#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelType.h"
#include "host/model/links/KelRelations.h"

KelModel::KelModel() : KelPackage(KelElementType::model) {}

KelModel::~KelModel() {
    dissolve();
}

void KelModel::recursiveDelete() noexcept {
    deleteOwned();
    setName(emptyString);
    description.empty();
    physicalName.empty();
}

bool KelModel::isEmpty() const noexcept {
    return notes().isEmpty() && types().isEmpty() && metadataOrigins().isEmpty() && childPackages().isEmpty();
}

bool KelModel::addMetadataOrigin(KelMetadataOrigin* object) {
    return KelRelations::modelOrigins.link(this, object);
}

bool KelModel::addType(KelType* object) {
    return KelRelations::modelTypes.link(this, object);
}

bool KelModel::removeType(KelType* object) noexcept {
    return KelRelations::modelTypes.unlink(this, object);
}

bool KelModel::removeType(int index) noexcept {
    return removeType(types()[index]);
}
