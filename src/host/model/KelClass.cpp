#include "host/model/KelClass.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelOperation.h"
#include "host/model/links/KelRelations.h"

KelClass::KelClass() : KelClassifier(KelElementType::classObject) {}

KelClass::~KelClass() {
    dissolve();
}

bool KelClass::addAttribute(KelAttribute* object) {
    return KelRelations::classAttributes.link(this, object);
}

KelAttribute* KelClass::getAttribute(int index) const {
    return attributes()[index];
}

KelAttribute* KelClass::getAttribute(const KelString& name, int* index) const {
    int found = 0;
    KelAttribute* named = attributes().findNamed(name, &found);
    if (named != nullptr && index != nullptr) {
        *index = found;
    }
    return named;
}

bool KelClass::addOperation(KelOperation* object) {
    return KelRelations::classOperations.link(this, object);
}

bool KelClass::addArgument(KelArgument* object) {
    return KelRelations::classArguments.link(this, object);
}

bool KelClass::addKey(KelKey* object) {
    return KelRelations::classKeys.link(this, object);
}

KelCandidateKey* KelClass::getPrimaryKey() const {
    return static_cast<KelCandidateKey*>(primaryKey_.get());
}
