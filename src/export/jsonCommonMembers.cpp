#include "export/jsonCommonMembers.h"

#include "export/JsonMembers.h"
#include "host/model/KelModelObject.h"
#include "host/model/KelNote.h"
#include "source/SourceMap.h"

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

void writePlace(const KelObject& object, const source::SourceMap* places, JsonMembers& members) {
    const source::SourcePlace* place = places != nullptr ? places->find(object) : nullptr;
    if (place == nullptr) {
        return;
    }
    members.optionalText("quid", KelString(std::string_view(place->quid)));
    if (place->file != 0) {
        members.text("file", KelString(std::string_view(places->getFiles()[place->file])));
    }
    members.number("line", static_cast<std::int64_t>(place->begin.line));
}

} // namespace exporter
