// Class diagrams and what is drawn on them.

#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelNote.h"
#include "ledger/LedgerMaker.h"
#include "ledger/reasons.h"

#include <tsl/robin_set.h>

namespace ledger {

namespace {

constexpr KelElementType kindShownBy(Subject view) {
    return view == Subject::generalizationView ? KelElementType::generalization
           : view == Subject::realizationView  ? KelElementType::realization
                                               : KelElementType::dependency;
}

} // namespace

void LedgerMaker::beginDiagram(SourceObject& object, const SourceObject* parent) {
    drawn_.clear();
    const std::string name = taken(object.name, object.file);
    const bool inPackage = parent != nullptr && parent->subject() == Subject::package && parent->object != nullptr;
    KelDiagram* found = inPackage ? index_.takeDiagram(static_cast<const KelPackage*>(parent->object), name) : nullptr;
    while (started_ && (found == nullptr || claimed_.contains(found))) {
        found = index_.takeDiagram(nullptr, name);
        if (found == nullptr) {
            break;
        }
        object.verdict = {&reasons::misplaced, '"' + std::string(found->getDesignPackage()->getName().view()) + '"'};
    }
    if (found == nullptr) {
        return drop(object, started_ ? reasons::notInModel : reasons::outsideLogicalView);
    }
    claim(*found, object);
    object.object = found;
}

void LedgerMaker::finishClassView(SourceObject& object) {
    const auto& diagram = static_cast<const KelDiagram&>(*objects_[depth_ - 1].object);
    const std::string text = taken(object.secondName, object.file);
    KelClass* shown = index_.findClass(classNamed(text));
    if (shown == nullptr || !diagram.modelElements().holds(*shown)) {
        return drop(object, mutedBy_ ? reasons::muted : reasons::nothingToShow, mutedBy_.value_or(""));
    }
    object.object = shown;
    Drawn& drawn = drawn_[object.reference];
    drawn.element = shown;
    if (!drawnClasses_.insert(shown).second) {
        object.verdict.reason = &reasons::drawnTwice;
    }
}

void LedgerMaker::finishRelationshipView(SourceObject& object) {
    const auto elementOf = [&](std::string_view property) -> const KelModelElement* {
        const SourceValue* value = object.find(property);
        auto found = value != nullptr ? drawn_.find(value->text) : drawn_.end();
        if (found != drawn_.end() && found->second.element == nullptr) {
            found = drawn_.find(found->second.instead);
        }
        return found != drawn_.end() ? found->second.element : nullptr;
    };
    const KelModelElement* client = nullptr;
    const KelModelElement* supplier = nullptr;
    if (object.subject() != Subject::associationView) {
        client = elementOf("client");
        supplier = elementOf("supplier");
    }
    deferred_.push_back({std::move(object), objects_[depth_ - 1].object, client, supplier});
}

// Relationships may be defined behind the diagrams that show them.
void LedgerMaker::finishDeferred() {
    for (Deferred& deferred : deferred_) {
        SourceObject& view = deferred.view;
        const auto& diagram = static_cast<const KelDiagram&>(*deferred.diagram);
        const KelObject* shown = nullptr;
        const bool isAssociation = view.subject() == Subject::associationView;
        if (isAssociation) {
            const SourceValue* quid = view.find("quidu");
            const auto found = quid != nullptr ? associations_.find(quid->text) : associations_.end();
            shown = found != associations_.end() ? found->second : nullptr;
        } else if (deferred.client != nullptr && deferred.supplier != nullptr) {
            shown = index_.findRelationship(kindShownBy(view.subject()), static_cast<const KelClass&>(*deferred.client),
                                            static_cast<const KelClass&>(*deferred.supplier));
        } else {
            view.verdict.reason = &reasons::endNotDrawn;
        }
        if (shown != nullptr && diagram.modelElements().holds(static_cast<const KelModelElement&>(*shown))) {
            view.object = const_cast<KelObject*>(shown);
            view.verdict.reason = &reasons::kept;
        } else if (view.verdict.reason != &reasons::endNotDrawn) {
            view.verdict.reason = &reasons::nothingToShow;
        }
        settle(view);
    }
    deferred_.clear();
}

void LedgerMaker::finishDiagram(SourceObject& object) {
    finishNotes(object);
    drawn_.clear();
    drawnClasses_.clear();
}

// The notes that the model has on the diagram and on what it shows are known by their texts.
void LedgerMaker::finishNotes(SourceObject& object) {
    if (object.held.empty()) {
        return;
    }
    const auto& diagram = static_cast<const KelDiagram&>(*object.object);
    tsl::robin_set<std::string> texts;
    const auto add = [&](const KelElement& element) {
        for (const KelNote* note : element.notes()) {
            texts.emplace(note->description.view());
        }
    };
    add(diagram);
    for (const KelModelElement* element : diagram.modelElements()) {
        add(*element);
    }
    tsl::robin_set<std::string> attached; // the numbers of notes that the model has
    for (SourceObject& held : object.held) {
        if (held.subject() != Subject::noteView) {
            continue;
        }
        SourceObject* label = held.held.empty() ? nullptr : &held.held.front();
        const bool isFound = texts.contains(textOf(label != nullptr ? *label : held, "label"));
        held.verdict.reason = isFound ? &reasons::kept : &reasons::attachedToNothing;
        if (isFound) {
            held.object = object.object;
            if (label != nullptr) {
                label->object = object.object;
                label->verdict.reason = &reasons::noteText;
            }
            attached.insert(held.reference);
        }
    }
    for (SourceObject& held : object.held) {
        if (held.subject() != Subject::attachView) {
            continue;
        }
        const auto isNote = [&](std::string_view property) {
            const SourceValue* value = held.find(property);
            return value != nullptr && attached.contains(value->text);
        };
        const bool isFound = isNote("client") || isNote("supplier");
        held.verdict.reason = isFound ? &reasons::kept : &reasons::nothingToShow;
        held.object = isFound ? object.object : nullptr;
    }
    settleHeld(object, {&reasons::layoutOfNote, {}});
}

} // namespace ledger
