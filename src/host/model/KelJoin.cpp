#include "host/model/KelJoin.h"

KelJoin::KelJoin() : KelClassifier(KelElementType::join) {}

KelJoin::~KelJoin() {
    dissolve();
}

KelJoinRole::KelJoinRole() : KelModelObject(KelElementType::joinRole) {}

KelJoinRole::~KelJoinRole() {
    dissolve();
}
