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
    diagramDescription = true;
}

/// One effect for two keywords: what makes a text a label is the word "label" anywhere in its line.
void placeText(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (!InNoteView && std::strstr(reading.text, "label") == nullptr) {
        if (activeObject != nullptr) {
            activeObject->description.prepend(reading.value); // the text read last goes in front
            trace::changed(*activeObject, nullptr, KelImportReason::textAdded);
        } else {
            trace::refused(KelImportReason::nothingActive);
        }
    } else if (diagramDescription && aDiagram != nullptr) {
        aDiagram->description.prepend(reading.value);
        trace::changed(*aDiagram, nullptr, KelImportReason::textAdded);
        diagramDescription = false;
    } else if (InNoteView) {
        CreateNote(reading.value);
    } else {
        AddLabel(reading.value);
    }
}

} // namespace rose
