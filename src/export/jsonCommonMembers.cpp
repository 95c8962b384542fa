#include "export/jsonCommonMembers.h"

#include "export/JsonMembers.h"
#include "host/model/KelModelObject.h"
#include "host/model/KelNote.h"

namespace exporter {

void writeNotes(const KelElement& element, JsonMembers& members) {
    if (element.notes().isEmpty()) {
        return;
    }
    members.startList("notes");
    for (const KelNote* note : element.notes()) {
        members.entry(note->description);
    }
    members.endList();
}

void writeNamed(const KelModelObject& object, JsonMembers& members) {
    members.text("name", object.getName());
    members.optionalText("description", object.description);
    writeNotes(object, members);
}

} // namespace exporter
