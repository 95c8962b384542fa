// Class diagrams and what is drawn on them.

#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModelElement.h"
#include "ledger/LedgerMaker.h"
#include "ledger/reasons.h"

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
    drawnClasses_.clear();
    lastDiagram_ = nullptr;
    active_ = nullptr;
    const std::string name = taken(object.name, object.file);
    const bool inPackage = parent != nullptr && parent->subject() == Subject::package && parent->object != nullptr;
    KelDiagram* found = inPackage ? index_.takeDiagram(static_cast<const KelPackage*>(parent->object), name) : nullptr;
    while (started_ && (found == nullptr || claimed_.contains(found))) {
        found = index_.takeDiagram(nullptr, name);
        if (found == nullptr) {
            break;
        }
        object.verdict = {&reasons::misplaced, quoted(*found->getDesignPackage())};
    }
    if (found == nullptr) {
        return drop(object, started_ ? reasons::notInModel : reasons::outsideLogicalView);
    }
    claim(*found, object);
    object.object = found;
    lastDiagram_ = found;
    active_ = found;
}

// What the import gives what follows a view to.
void LedgerMaker::beginClassView(const SourceObject& object) {
    if (object.subject() == Subject::classView && lastDiagram_ != nullptr) {
        lastClass_ = index_.findClass(classNamed(taken(object.secondName, object.file)));
        active_ = lastClass_;
    } else if (object.subject() != Subject::generalizationView) {
        active_ = nullptr;
    }
}

void LedgerMaker::finishClassView(SourceObject& object, const SourceObject* parent) {
    const std::string text = taken(object.secondName, object.file);
    KelClass* shown = index_.findClass(classNamed(text));
    if (shown == nullptr || lastDiagram_ == nullptr || !lastDiagram_->modelElements().holds(*shown)) {
        if (parent == nullptr || parent->subject() != Subject::classDiagram) {
            return missing(object, parent);
        }
        return drop(object, mutedBy_ ? reasons::muted : reasons::nothingToShow, mutedBy_.value_or(""));
    }
    take(object, *shown, *lastDiagram_, parent != nullptr ? parent->object : nullptr);
    drawn_[object.reference].element = shown;
    if (object.verdict.reason != &reasons::kept) {
        return;
    }
    if (!drawnClasses_.insert(shown).second) {
        object.verdict.reason = &reasons::drawnTwice;
    } else if (shown->getDesignPackage() == index_.homeOfNamed()) {
        object.verdict.reason = &reasons::amongNamed;
    }
}

void LedgerMaker::finishRelationshipView(SourceObject& object, const SourceObject* parent) {
    const auto classOf = [&](std::string_view property) -> const KelClass* {
        const SourceValue* value = object.find(property);
        auto found = value != nullptr ? drawn_.find(value->text) : drawn_.end();
        if (found != drawn_.end() && found->second.element == nullptr) {
            found = drawn_.find(found->second.instead);
        }
        const KelModelElement* element = found != drawn_.end() ? found->second.element : nullptr;
        return element != nullptr && element->elementType == KelElementType::classObject
                   ? static_cast<const KelClass*>(element)
                   : nullptr;
    };
    const bool isAstray = parent == nullptr || parent->object != lastDiagram_;
    if (object.subject() == Subject::associationView) {
        const SourceValue* quid = object.find("quidu");
        const auto found = quid != nullptr ? associations_.find(quid->text) : associations_.end();
        if (quid != nullptr && found == associations_.end()) { // it may be defined behind the diagrams that show it
            deferred_.push_back({std::move(object), lastDiagram_, isAstray});
            return;
        }
        return settleView(object, *lastDiagram_, found != associations_.end() ? found->second : nullptr, isAstray);
    }
    const KelClass* client = classOf("client");
    const KelClass* supplier = classOf("supplier");
    if (client == nullptr || supplier == nullptr) {
        object.verdict.reason = &reasons::endNotDrawn;
        return settleView(object, *lastDiagram_, nullptr, isAstray);
    }
    settleView(object, *lastDiagram_, index_.findRelationship(kindShownBy(object.subject()), *client, *supplier),
               isAstray);
}

void LedgerMaker::settleView(SourceObject& view, const KelDiagram& diagram, const KelObject* shown, bool isAstray) {
    if (shown != nullptr && diagram.modelElements().holds(static_cast<const KelModelElement&>(*shown))) {
        view.object = const_cast<KelObject*>(shown);
        view.verdict = isAstray ? Verdict{&reasons::given, quoted(diagram)} : Verdict{&reasons::kept, {}};
        noteDrawn(diagram, view.reference, static_cast<KelModelElement&>(*view.object));
    } else if (isAstray) {
        view.verdict.reason = &reasons::within;
    } else if (view.verdict.reason != &reasons::endNotDrawn) {
        view.verdict.reason = &reasons::nothingToShow;
    }
    settleHeld(view, {&reasons::within, {}});
    settle(view);
}

void LedgerMaker::finishDeferred() {
    for (Deferred& deferred : deferred_) {
        const auto found = associations_.find(deferred.view.find("quidu")->text);
        settleView(deferred.view, *deferred.diagram, found != associations_.end() ? found->second : nullptr,
                   deferred.isAstray);
    }
    deferred_.clear();
    finishNotes();
}

} // namespace ledger
