// Diagrams, notes, and the elements that have notes.
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelElement.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelNote.h"
#include "host/model/links/KelRelations.h"

KelDiagram::~KelDiagram() {
    dissolve();
}

bool KelDiagram::addModelElement(KelModelElement* object) {
    return KelRelations::diagramElements.link(this, object);
}

bool KelDiagram::removeModelElement(KelModelElement* object) noexcept {
    return KelRelations::diagramElements.unlink(this, object);
}

KelDesignPackage* KelDiagram::getDesignPackage() const {
    return static_cast<KelDesignPackage*>(designPackage_.get());
}

KelClassDiagram::KelClassDiagram() : KelDiagram(KelElementType::classDiagram) {}

KelClassDiagram::~KelClassDiagram() {
    dissolve();
}

KelElement::~KelElement() {
    dissolve();
}

bool KelElement::addNote(KelNote* object) {
    return KelRelations::elementNotes.link(this, object);
}

KelNote::KelNote() : KelObject(KelElementType::note) {}

KelNote::KelNote(const KelNote& other) : KelNote() {
    setFrom(other);
}

KelNote& KelNote::operator=(const KelNote& other) {
    if (this != &other) {
        setFrom(other);
    }
    return *this;
}

KelNote::~KelNote() {
    dissolve();
}

KelElement* KelNote::getElement() const {
    return static_cast<KelElement*>(element_.get());
}
