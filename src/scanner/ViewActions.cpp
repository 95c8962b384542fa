#include "scanner/Actions.h"

#include "builder/AssociationViews.h"
#include "builder/BuilderState.h"
#include "builder/ClassDiagrams.h"
#include "builder/Quids.h"
#include "scanner/actionParts.h"

namespace rose {

void addClassView(const Reading& reading) {
    state.InAssociationView = false;
    if (reading.value != nullptr) {
        AddToDiagram(reading.value, reading.viewNumber);
    }
}

void createAssociationInView(const Reading& reading) {
    give(CreateAssociationInView, reading);
}

void connectAssociationToDiagram(const Reading& reading) {
    give(ConnectAssociationToDiagram, reading);
}

void enterGeneralizationView(const Reading&) {
    state.InGeneralizationView = true;
}

void enterRealizationView(const Reading&) {
    state.InRealizationView = true;
    state.activeObject = nullptr;
}

void enterUsesView(const Reading&) {
    state.InUsesView = true;
    state.activeObject = nullptr;
}

void enterRoleView(const Reading&) {
    state.InAssociationRoleView = true;
}

void enterNoteView(const Reading&) {
    state.InNoteView = true;
    state.diagramDescription = false;
}

void enterCompartment(const Reading&) {
    state.InCompartment = true;
}

void expectNoteAttachment(const Reading&) {
    state.attachNote = true;
}

void createToolId(const Reading& reading) {
    give(CreateToolID, reading);
}

void setClient(const Reading& reading) {
    if (reading.value != nullptr) {
        state.client = decimal(reading.value);
    }
}

} // namespace rose
