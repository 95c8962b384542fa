#include "builder/AssociationViews.h"

#include "builder/BuilderState.h"
#include "builder/ClassDiagrams.h"
#include "builder/Unattached.h"
#include "builder/copyNotes.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/QuidRegistry.h"
#include "builder/indexes/WaitingNodes.h"
#include "builder/unnamed.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClassDiagram.h"

#include <memory>
#include <utility>

namespace rose {

namespace {

/// The association of that quid: a placeholder, or else one in a package; or null.
KelAssociation* findAssociation(const KelString& quid) {
    KelAssociation* placeholder = QuidRegistry::findPlaceholder(quid);
    return placeholder != nullptr ? placeholder : QuidRegistry::findInPackages(quid);
}

/// Makes the view's association the placeholder for that quid.
void park(KelAssociation& view, const KelString& quid) {
    QuidRegistry::hang(view, quid);
    WaitingNodes::add(state.toBeAssociations, view);
}

} // namespace

void CreateAssociationInView(char* name) {
    state.InAssociationView = true;
    auto made = std::make_unique<KelAssociation>();
    if (!isUnnamed(name)) {
        made->setName(name);
    }
    state.aAssociation = made.get();
    keepUnattached(std::move(made));
    trace::made(*state.aAssociation);
    state.InNoteView = false;
    state.activeObject = state.aAssociation;
}

void ConnectAssociationToDiagram(char* quid) {
    if (state.aDiagram == nullptr || !state.InAssociationView) {
        if (state.InAssociationView) {
            trace::refused(KelImportReason::noDiagram);
        }
        return;
    }
    state.InAssociationView = false;
    KelAssociation* view = std::exchange(state.aAssociation, nullptr);
    const KelString text(quid);
    state.aAssociation = findAssociation(text);
    if (state.aAssociation == nullptr) {
        if (view == nullptr) {
            trace::refused(KelImportReason::nothingToShow);
            return;
        }
        park(*view, text);
        state.aAssociation = view;
    } else if (view != nullptr && view != state.aAssociation) {
        copyNotes(*view, *state.aAssociation);
        trace::replaced(*view, KelImportReason::placeholder, *state.aAssociation);
        delete view;
    }
    showOnDiagram(*state.aAssociation);
    setViewNumber(*state.aAssociation, state.physicalId);
    state.activeObject = state.aAssociation;
    state.physicalId = 0;
    state.InNoteView = false;
}

} // namespace rose
