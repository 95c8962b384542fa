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
    const bool isAstray = parent == nullptr || parent->object != lastDiagram_;
    deferred_.push_back({std::move(object), lastDiagram_, client, supplier, isAstray});
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
            view.verdict = deferred.isAstray ? Verdict{&reasons::given, quoted(diagram)} : Verdict{&reasons::kept, {}};
            noteDrawn(diagram, view.reference, *shown);
        } else if (deferred.isAstray) {
            view.verdict.reason = &reasons::within;
        } else if (view.verdict.reason != &reasons::endNotDrawn) {
            view.verdict.reason = &reasons::nothingToShow;
        }
        settleHeld(view, {&reasons::within, {}});
        settle(view);
    }
    deferred_.clear();
    finishNotes();
}

} // namespace ledger
