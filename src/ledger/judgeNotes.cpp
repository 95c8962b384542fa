// Notes and what they are attached to. The import gives notes by the numbers of views, which further diagrams use
// again, so a note may stand where its text is not expected: all are judged once everything has been read.

#include "host/model/KelDiagram.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelNote.h"
#include "ledger/LedgerMaker.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ledger {

namespace {

bool isOn(const KelDiagram& diagram, const KelElement& element) {
    return element.elementType != KelElementType::classDiagram &&
           diagram.modelElements().holds(static_cast<const KelModelElement&>(element));
}

} // namespace

// Takes the notes out of what a diagram, or another object that is read while a diagram is current, holds.
void LedgerMaker::deferNotes(SourceObject& holder) {
    if (holder.held.empty() || lastDiagram_ == nullptr) {
        return;
    }
    DiagramNotes notes{lastDiagram_, {}, {}, {}, {}};
    for (SourceObject& held : holder.held) {
        if (held.subject() == Subject::noteView) {
            notes.byNumber.emplace(held.reference, notes.views.size());
            notes.views.push_back(std::move(held));
        } else if (held.subject() == Subject::attachView) {
            notes.attachments.push_back(std::move(held));
        }
    }
    if (notes.views.empty() && notes.attachments.empty()) {
        return;
    }
    for (const auto& [number, drawn] : drawn_) {
        if (drawn.element != nullptr) {
            notes.elements.emplace(number, static_cast<const KelObject*>(drawn.element));
        }
    }
    std::erase_if(holder.held, [](const SourceObject& held) {
        return held.subject() == Subject::noteView || held.subject() == Subject::attachView;
    });
    notesOf_.emplace(lastDiagram_, notes_.size());
    notes_.push_back(std::move(notes));
}

void LedgerMaker::noteDrawn(const KelDiagram& diagram, const std::string& reference, KelModelElement& shown) {
    if (&diagram == lastDiagram_) {
        drawn_[reference].element = &shown;
    }
    if (const auto found = notesOf_.find(&diagram); found != notesOf_.end()) {
        notes_[found->second].elements.emplace(reference, static_cast<const KelObject*>(&shown));
    }
}

// Each note of the model stands for one of the file: those that are where the file attaches them, then those on the
// same diagram, and then those of the same text anywhere.
void LedgerMaker::finishNotes() {
    for (DiagramNotes& notes : notes_) {
        for (SourceObject& attachment : notes.attachments) {
            attach(notes, attachment);
        }
    }
    for (DiagramNotes& notes : notes_) {
        for (SourceObject& view : notes.views) {
            if (view.object == nullptr) {
                finishNote(view, index_.takeNote(notes.diagram, textOfNote(view)));
            }
        }
    }
    for (DiagramNotes& notes : notes_) {
        for (SourceObject& view : notes.views) {
            const std::string text = view.object == nullptr ? textOfNote(view) : std::string();
            if (KelNote* found = text.empty() ? nullptr : index_.takeNote(nullptr, text)) {
                finishNote(view, found);
                const KelElement& holder = *found->getElement();
                if (!isOn(*notes.diagram, holder)) {
                    view.verdict = {&reasons::misplaced, quoted(holder)};
                }
            } else if (view.object == nullptr) {
                view.verdict.reason = &reasons::attachedToNothing;
            }
            settleHeld(view, {&reasons::layoutOfNote, {}});
            settle(view);
        }
        for (SourceObject& attachment : notes.attachments) {
            settle(attachment);
        }
    }
}

// Looks for the note that the view attaches, on the element that it attaches it to.
void LedgerMaker::attach(DiagramNotes& notes, SourceObject& attachment) {
    attachment.verdict.reason = &reasons::nothingToShow;
    constexpr std::array ends{std::pair{"client", "supplier"}, std::pair{"supplier", "client"}};
    for (const auto& [noteEnd, otherEnd] : ends) {
        const SourceValue* number = attachment.find(noteEnd);
        const auto view = number != nullptr ? notes.byNumber.find(number->text) : notes.byNumber.end();
        if (view == notes.byNumber.end()) {
            continue;
        }
        SourceObject& note = notes.views[view->second];
        const std::string text = textOfNote(note);
        const SourceValue* target = attachment.find(otherEnd);
        const auto element = target != nullptr ? notes.elements.find(target->text) : notes.elements.end();
        const KelObject* place = element != notes.elements.end() ? element->second : nullptr;
        KelNote* found = place != nullptr ? index_.takeNote(place, text) : nullptr;
        attachment.verdict.reason = &reasons::kept;
        if (found == nullptr) {
            found = index_.takeNote(notes.diagram, text);
            attachment.verdict.reason = &reasons::noteOnDiagram;
        }
        if (found != nullptr) {
            attachment.object = found;
            return finishNote(note, found);
        }
        attachment.verdict.reason = &reasons::nothingToShow;
    }
}

void LedgerMaker::finishNote(SourceObject& view, KelNote* found) {
    if (found == nullptr || view.object != nullptr) {
        return; // a note that is attached several times has a note of the model for each
    }
    view.object = found;
    view.verdict.reason = &reasons::kept;
    if (!view.held.empty()) {
        view.held.front().object = found;
        view.held.front().verdict.reason = &reasons::noteText;
    }
}

std::string LedgerMaker::textOfNote(const SourceObject& view) {
    return textOf(view.held.empty() ? view : view.held.front(), "label");
}

} // namespace ledger
