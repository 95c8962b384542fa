#include "host/model/KelElement.h"

#include "host/model/KelNote.h"
#include "host/model/links/KelRelations.h"

KelElement::~KelElement() {
    dissolve();
}

bool KelElement::addNote(KelNote* object) {
    return KelRelations::elementNotes.link(this, object);
}
