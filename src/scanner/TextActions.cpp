#include "scanner/Actions.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Notes.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelModelObject.h"

#include <cstring>
#include <utility>

namespace rose {

namespace {

/// The text read last goes in front.
void putInFront(KelString& description, const char* text) {
    description = KelString(text) + description;
}

} // namespace

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
            putInFront(activeObject->description, reading.value);
        }
    } else if (diagramDescription && aDiagram != nullptr) {
        putInFront(aDiagram->description, reading.value);
        diagramDescription = false;
    } else if (InNoteView) {
        CreateNote(reading.value);
    } else {
        AddLabel(reading.value);
    }
}

} // namespace rose
