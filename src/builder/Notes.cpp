#include "builder/Notes.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelElement.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelNote.h"

#include <cstdlib>
#include <map>
#include <memory>

namespace rose {

namespace {

/// The first record of each view number in `toBeNotes`; a linear search would stop at that one.
std::map<int, const NoteRecord*> firstRecords; // ordered: a file could choose numbers that collide

const NoteRecord* findRecord(int viewId) {
    const auto found = firstRecords.find(viewId);
    return found != firstRecords.end() ? found->second : nullptr;
}

/// The first element of the current diagram with either number, or else the diagram itself.
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
    const NoteRecord& kept = *record.release();
    firstRecords.try_emplace(kept.viewId, &kept);
}

void addANote(char* text) {
    state.attachNote = false;
    state.InNoteView = false;
    if (state.aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    const int number = static_cast<int>(std::strtol(text, nullptr, 10));
    if (const NoteRecord* record = findRecord(state.client); record != nullptr) {
        state.currentNoteId = *record;
    }
    auto note = std::make_unique<KelNote>();
    note->description = state.currentNoteId.text;
    KelElement& element = annotated(state.client, number);
    KelNote* added = nullptr;
    {
        // Without a text the attachment makes the note.
        const trace::SourceScope ofText(state.currentNoteId.source.rule != 0 ? state.currentNoteId.source
                                                                             : state.theSource);
        added = attach(std::move(note), [&](KelNote* offered) { return element.addNote(offered); });
    }
    trace::changed(element, added,
                   &element == state.aDiagram ? KelImportReason::attachedToDiagram : KelImportReason::none);
}

void copyNotes(const KelElement& from, KelElement& to) {
    for (KelNote* note : from.notes()) {
        KelNote* copy = attach(std::make_unique<KelNote>(*note), [&](KelNote* added) { return to.addNote(added); });
        trace::replaced(*note, KelImportReason::placeholder, *copy);
    }
}

void clearNoteIndex() noexcept {
    firstRecords.clear();
}

} // namespace rose
