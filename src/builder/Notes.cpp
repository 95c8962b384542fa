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
    const ContainerIndex& elements = indexOf(*state.aDiagram);
    const ContainerIndex::Place first = elements.first(firstView);
    const ContainerIndex::Place second = elements.first(secondView);
    if (first.element == nullptr && second.element == nullptr) {
        return *state.aDiagram;
    }
    const bool takesFirst = second.element == nullptr || (first.element != nullptr && first.order <= second.order);
    return takesFirst ? *first.element : *second.element;
}

} // namespace

void CreateNote(char* text) {
    state.currentNoteId.text = text;
    state.currentNoteId.source = state.theSource;
    auto record = std::make_unique<NoteRecord>(state.currentNoteId);
    state.toBeNotes.add(record.get(), true, nullptr);
    NoteTexts::add(*record.release());
}

void addANote(char* text) {
    state.attachNote = false;
    state.InNoteView = false;
    if (state.aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    const int number = static_cast<int>(std::strtol(text, nullptr, 10));
    if (const NoteRecord* record = NoteTexts::find(state.client); record != nullptr) {
        state.currentNoteId = *record;
    }
    auto note = std::make_unique<KelNote>();
    note->description = state.currentNoteId.text;
    KelElement& element = annotated(state.client, number);
    KelNote* added = nullptr;
    {
        // Without a text it is the attachment that makes the note.
        const trace::SourceScope ofText(state.currentNoteId.source.rule != 0 ? state.currentNoteId.source
                                                                             : state.theSource);
        added = attach(std::move(note), [&](KelNote* offered) { return element.addNote(offered); });
    }
    trace::changed(element, added,
                   &element == state.aDiagram ? KelImportReason::attachedToDiagram : KelImportReason::none);
}

} // namespace rose
