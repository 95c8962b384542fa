#include "builder/Notes.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/NoteTexts.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelNote.h"

#include <cstdlib>
#include <memory>

namespace rose {

namespace {

/// The element of the current diagram that a walk would meet first among those with either number, or else the
/// diagram itself.
KelElement& annotated(int firstView, int secondView) {
    const ContainerIndex& elements = indexOf(*aDiagram);
    const ContainerIndex::Place first = elements.first(firstView);
    const ContainerIndex::Place second = elements.first(secondView);
    if (first.element == nullptr && second.element == nullptr) {
        return *aDiagram;
    }
    const bool takesFirst = second.element == nullptr || (first.element != nullptr && first.order <= second.order);
    return takesFirst ? *first.element : *second.element;
}

} // namespace

void CreateNote(char* text) {
    currentNoteId.text = text;
    currentNoteId.source = theSource;
    auto record = std::make_unique<NoteRecord>(currentNoteId);
    toBeNotes.add(record.get(), true, nullptr);
    NoteTexts::add(*record.release());
}

void addANote(char* text) {
    attachNote = false;
    InNoteView = false;
    if (aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    const int number = static_cast<int>(std::strtol(text, nullptr, 10));
    if (const NoteRecord* record = NoteTexts::find(client); record != nullptr) {
        currentNoteId = *record;
    }
    auto note = std::make_unique<KelNote>();
    note->description = currentNoteId.text;
    KelElement& element = annotated(client, number);
    KelNote* added = nullptr;
    {
        // Without a text it is the attachment that makes the note.
        const trace::SourceScope ofText(currentNoteId.source.rule != 0 ? currentNoteId.source : theSource);
        added = attach(std::move(note), [&](KelNote* offered) { return element.addNote(offered); });
    }
    trace::changed(element, added, &element == aDiagram ? KelImportReason::attachedToDiagram : KelImportReason::none);
}

} // namespace rose
