#include "host/model/KelForeignKey.h"

#include "host/model/KelCandidateKey.h"
#include "host/model/links/KelRelations.h"

KelForeignKey::KelForeignKey() : KelKey(KelElementType::foreignKey) {}

KelForeignKey::~KelForeignKey() {
    dissolve();
}

bool KelForeignKey::addCandidateKey(KelCandidateKey* object) {
    return KelRelations::candidateKey.set(this, object);
}

KelCandidateKey* KelForeignKey::getCandidateKey() const {
    return static_cast<KelCandidateKey*>(candidateKey_.get());
}
