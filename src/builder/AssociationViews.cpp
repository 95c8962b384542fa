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
    WaitingNodes::add(toBeAssociations, view);
}

} // namespace

void CreateAssociationInView(char* name) {
    InAssociationView = true;
    auto made = std::make_unique<KelAssociation>();
    if (!isUnnamed(name)) {
        made->setName(name);
    }
    aAssociation = made.get();
    keepUnattached(std::move(made));
    trace::made(*aAssociation);
    InNoteView = false;
    activeObject = aAssociation;
}

void ConnectAssociationToDiagram(char* quid) {
    if (aDiagram == nullptr || !InAssociationView) {
        if (InAssociationView) {
            trace::refused(KelImportReason::noDiagram);
        }
        return;
    }
    InAssociationView = false;
    KelAssociation* view = std::exchange(aAssociation, nullptr);
    const KelString text(quid);
    aAssociation = findAssociation(text);
    if (aAssociation == nullptr) {
        if (view == nullptr) {
            trace::refused(KelImportReason::nothingToShow);
            return;
        }
        park(*view, text);
        aAssociation = view;
    } else if (view != nullptr && view != aAssociation) {
        copyNotes(*view, *aAssociation);
        trace::replaced(*view, KelImportReason::placeholder, *aAssociation);
        delete view;
    }
    showOnDiagram(*aAssociation);
    setViewNumber(*aAssociation, physicalId);
    activeObject = aAssociation;
    physicalId = 0;
    InNoteView = false;
}

} // namespace rose
