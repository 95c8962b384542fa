#include "scanner/Actions.h"

#include "builder/AssociationViews.h"
#include "builder/BuilderState.h"
#include "builder/ClassDiagrams.h"
#include "builder/Quids.h"
#include "scanner/actionParts.h"

namespace rose {

void addClassView(const Reading& reading) {
    InAssociationView = false;
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
    InGeneralizationView = true;
}

void enterRealizationView(const Reading&) {
    InRealizationView = true;
    activeObject = nullptr;
}

void enterUsesView(const Reading&) {
    InUsesView = true;
    activeObject = nullptr;
}

void enterRoleView(const Reading&) {
    InAssociationRoleView = true;
}

void enterNoteView(const Reading&) {
    InNoteView = true;
    diagramDescription = false;
}

void enterCompartment(const Reading&) {
    InCompartment = true;
}

void expectNoteAttachment(const Reading&) {
    attachNote = true;
}

void createToolId(const Reading& reading) {
    give(CreateToolID, reading);
}

void setClient(const Reading& reading) {
    if (reading.value != nullptr) {
        client = decimal(reading.value);
    }
}

} // namespace rose
