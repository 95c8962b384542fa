#include "builder/Quids.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/copyNotes.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/QuidRegistry.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelDiagram.h"

#include <cstdlib>

namespace rose {

namespace {

/// Gives the association what its placeholder has gathered, and deletes the placeholder.
void mergePlaceholder(KelAssociation& association, KelAssociation* placeholder) {
    for (KelDiagram* diagram : placeholder->diagrams()) {
        draw(*diagram, association);
    }
    copyNotes(*placeholder, association);
    if (association.toolId == 0) {
        setViewNumber(association, placeholder->toolId);
    }
    trace::replaced(*placeholder, KelImportReason::placeholder, association);
    delete placeholder;
}

} // namespace

void SetQuid(char* quid) {
    if (state.activeObject == nullptr || state.activeObject->elementType != KelElementType::association ||
        state.activeObject->generalPointer != nullptr) {
        return;
    }
    // The active object is the current association whenever it is an association at all.
    auto& association = static_cast<KelAssociation&>(*state.activeObject);
    const KelString text(quid);
    QuidRegistry::hang(association, text);
    if (KelAssociation* placeholder = QuidRegistry::findPlaceholder(text); placeholder != nullptr) {
        mergePlaceholder(association, placeholder);
    }
}

void CreateToolID(char* text) {
    if (state.InCompartment) {
        state.InCompartment = false;
        return;
    }
    const int number = static_cast<int>(std::strtol(text, nullptr, 10));
    if (state.InNoteView) {
        state.currentNoteId.viewId = number;
    } else if (state.activeObject != nullptr) {
        setViewNumber(*state.activeObject, number);
    } else {
        state.physicalId = number;
    }
}

} // namespace rose
