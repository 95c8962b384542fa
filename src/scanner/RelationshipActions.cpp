#include "scanner/Actions.h"

#include "builder/Associations.h"
#include "builder/Binding.h"
#include "builder/BuilderState.h"
#include "builder/Quids.h"
#include "builder/Relationships.h"
#include "builder/indexes/AggregateRoles.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "scanner/actionParts.h"

namespace rose {

void createAssociation(const Reading& reading) {
    state.objectMechanism = false;
    give(CreateAssociation, reading);
}

void createAssociationRole(const Reading& reading) {
    give(CreateAssociationRole, reading);
}

void createAssociationClass(const Reading& reading) {
    give(CreateAssociationClass, reading);
}

void setCardinality(const Reading& reading) {
    give(SetCardinality, reading);
}

void setNavigable(const Reading& reading) {
    if (state.aAssociationRole != nullptr && saysTrue(reading)) {
        state.aAssociationRole->isNavigable = true;
        trace::changed(*state.aAssociationRole);
    } else if (state.aAssociationRole == nullptr) {
        trace::refused(KelImportReason::noAssociation);
    }
}

/// Of an association with both roles only the current one is the aggregate.
void markAggregation(const Reading& reading) {
    if (state.aAssociation == nullptr || state.aAssociationRole == nullptr || !saysTrue(reading)) {
        return;
    }
    state.aAssociation->isAggregation = true;
    if (state.aAssociation->associationRoles().count() >= 2) {
        AggregateRoles::mark(*state.aAssociationRole, *state.aAssociation);
    }
    trace::changed(*state.aAssociation);
    trace::changed(*state.aAssociationRole, nullptr,
                   state.aAssociationRole->isAggregate ? KelImportReason::none : KelImportReason::wholeOnly);
}

void enterQualifier(const Reading&) {
    state.InQualifier = true;
}

void setQuid(const Reading& reading) {
    give(SetQuid, reading);
}

void createGeneralization(const Reading&) {
    CreateGeneralization();
}

void createRealization(const Reading&) {
    CreateRealization();
}

void createDependency(const Reading&) {
    CreateDependency();
}

void bindSupplier(const Reading& reading) {
    give(CreateBinding, reading);
    state.InGeneralizationView = false;
    state.InRealizationView = false;
    state.InUsesView = false;
    state.InAssociationRoleView = false;
}

} // namespace rose
