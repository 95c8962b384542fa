#include "host/model/KelCandidateKey.h"

#include "host/model/KelClass.h"
#include "host/model/links/KelRelations.h"

KelCandidateKey::KelCandidateKey() : KelKey(KelElementType::candidateKey) {}

KelCandidateKey::~KelCandidateKey() {
    dissolve();
}

bool KelCandidateKey::addPrimaryOfClass(KelClass* object) {
    return KelRelations::primaryOfClass.set(this, object);
}

KelClass* KelCandidateKey::getPrimaryOfClass() const {
    return static_cast<KelClass*>(primaryOfClass_.get());
}
