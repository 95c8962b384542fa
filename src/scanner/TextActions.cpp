#include "scanner/Actions.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Notes.h"
#include "builder/Trace.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelModelObject.h"

#include <cstring>
#include <utility>

namespace rose {

void expectDiagramText(const Reading&) {
    state.diagramDescription = true;
}

/// One effect for two keywords: what makes a text a label is the word "label" anywhere in its line.
void placeText(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (!state.InNoteView && std::strstr(reading.text, "label") == nullptr) {
        if (state.activeObject != nullptr) {
            state.activeObject->description.prepend(reading.value); // the text read last goes in front
            trace::changed(*state.activeObject, nullptr, KelImportReason::textAdded);
        } else {
            trace::refused(KelImportReason::nothingActive);
        }
    } else if (state.diagramDescription && state.aDiagram != nullptr) {
        state.aDiagram->description.prepend(reading.value);
        trace::changed(*state.aDiagram, nullptr, KelImportReason::textAdded);
        state.diagramDescription = false;
    } else if (state.InNoteView) {
        CreateNote(reading.value);
    } else {
        AddLabel(reading.value);
    }
}

} // namespace rose
