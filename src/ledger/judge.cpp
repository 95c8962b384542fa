// Which judgement each object gets, and what these have in common.

#include "host/model/KelClass.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "ledger/LedgerMaker.h"
#include "ledger/reasons.h"
#include "notation/unescaped.h"

#include <algorithm>

namespace ledger {

namespace {

/// What is read whatever it stands in: a keyword of the import that no object around it can hide.
bool isReadAnywhere(Subject subject) {
    return subject == Subject::package || subject == Subject::classObject || subject == Subject::association ||
           subject == Subject::classDiagram;
}

/// What the import gives to the class or the diagram that it came upon last, whatever it stands in.
bool isReadAstray(Subject subject) {
    static constexpr std::array subjects{
        Subject::attribute,          Subject::operation,       Subject::parameter,      Subject::generalization,
        Subject::realization,        Subject::dependency,      Subject::classView,      Subject::associationView,
        Subject::generalizationView, Subject::realizationView, Subject::dependencyView, Subject::noteView,
        Subject::attachView};
    return std::ranges::find(subjects, subject) != subjects.end();
}

bool isNote(Subject subject) {
    return subject == Subject::noteView || subject == Subject::attachView;
}

/// Whether an object can only be judged together with the one that it stands in.
bool isHeld(const SourceObject& object, const SourceObject& parent) {
    return (isNote(object.subject()) && !isNote(parent.subject())) ||
           (object.subject() == Subject::role && parent.subject() == Subject::association) ||
           (object.subject() == Subject::label && parent.subject() == Subject::noteView);
}

bool isOnDiagram(const SourceObject* parent) {
    return parent != nullptr && parent->subject() == Subject::classDiagram && parent->dropped == nullptr;
}

bool isDrawnElement(Subject subject) {
    return subject >= Subject::classView && subject <= Subject::dependencyView;
}

} // namespace

std::string quoted(const KelObject& object) {
    return '"' + std::string(object.getName().view()) + '"';
}

void LedgerMaker::begin(SourceObject& object, SourceObject* parent) {
    const KindRow& row = *object.kind->row;
    if (row.gate == Gate::unmutes) {
        mutedBy_.reset();
    } else if (row.gate == Gate::mutes) {
        mutedBy_ = std::string(row.kind) + " at line " + std::to_string(object.place.line);
    }
    object.verdict.reason = &reasons::kept;
    if (object.unit != nullptr && object.unit->state == units::UnitState::found) {
        object.verdict = {&reasons::readFromUnit, object.unit->path.string()};
        return;
    }
    if (row.subject == Subject::none) {
        return drop(object, row.reason);
    }
    if (parent != nullptr && parent->dropped != nullptr && !isReadAnywhere(row.subject) &&
        !(isReading() && isReadAstray(row.subject))) {
        return missing(object, parent);
    }
    switch (row.subject) {
    case Subject::header:
    case Subject::design:
        object.object = const_cast<KelModel*>(&model_);
        return;
    case Subject::package:
        return beginPackage(object, parent);
    case Subject::classObject:
        return beginClass(object, parent);
    case Subject::attribute:
        return beginAttribute(object, parent);
    case Subject::operation:
        return beginOperation(object, parent);
    case Subject::parameter:
        return beginParameter(object, parent);
    case Subject::operationText:
        object.object = parent != nullptr && parent->subject() == Subject::operation ? parent->object : nullptr;
        return object.object == nullptr ? missing(object, parent) : void();
    case Subject::association:
        lastClass_ = nullptr;
        active_ = nullptr;
        return;
    case Subject::role:
    case Subject::generalization:
    case Subject::realization:
    case Subject::dependency:
        active_ = nullptr;
        return;
    case Subject::classDiagram:
        return beginDiagram(object, parent);
    case Subject::treeView:
        return;
    default:
        if (isDrawnElement(row.subject) && isReading()) {
            beginClassView(object);
        }
        if (row.subject > Subject::classDiagram && row.subject != Subject::label && !isOnDiagram(parent) &&
            (lastDiagram_ == nullptr || row.subject == Subject::diagramLabel)) {
            parent != nullptr && parent->dropped != nullptr ? missing(object, parent) : drop(object, reasons::within);
        } else if (row.subject == Subject::diagramLabel) {
            object.object = parent->object;
        } else if (row.subject == Subject::label && (parent == nullptr || parent->subject() != Subject::noteView)) {
            drop(object, row.reason);
        }
    }
}

void LedgerMaker::finish(SourceObject& object, SourceObject* parent) {
    deferNotes(object);
    if (object.dropped == nullptr && object.verdict.reason != &reasons::readFromUnit) {
        switch (object.subject()) {
        case Subject::package:
            finishPackage(object);
            break;
        case Subject::attribute:
            finishAttribute(object);
            break;
        case Subject::operation:
            finishTyped(object, "result");
            break;
        case Subject::parameter:
            finishTyped(object, "type");
            break;
        case Subject::association:
            finishAssociation(object, parent);
            break;
        case Subject::generalization:
        case Subject::realization:
        case Subject::dependency:
            finishRelationship(object, parent);
            break;
        case Subject::classView:
            finishClassView(object, parent);
            break;
        case Subject::associationView:
        case Subject::generalizationView:
        case Subject::realizationView:
        case Subject::dependencyView:
            if (lastDiagram_ != nullptr) { // it may have ended within the view
                return finishRelationshipView(object, parent);
            }
            break;
        case Subject::treeView:
            drawn_[object.reference].instead = object.find("supplier") != nullptr ? object.find("supplier")->text : "";
            drop(object, object.kind->row->reason);
            break;
        default:
            break;
        }
    }
    const bool isPart = parent != nullptr && isHeld(object, *parent);
    const bool standsForUnit = object.verdict.reason == &reasons::readFromUnit;
    if (object.object == nullptr && object.dropped == nullptr && !isPart && !standsForUnit) {
        drop(object, reasons::within);
    }
    if (object.verdict.reason == &reasons::kept && takenOfQuoted(object.name) != object.name) {
        object.verdict = {&reasons::nameCut, taken(object.name, object.file)};
    }
    if (isPart && object.dropped == nullptr) {
        object.verdict = {};
        parent->held.push_back(std::move(object));
        return;
    }
    settleHeld(object, {&reasons::within, {}});
    settle(object);
}

std::string LedgerMaker::nameOf(const SourceObject& object) {
    return textOf(object.file).toUtf8(notation::unescaped(object.secondName.empty() ? object.name : object.secondName));
}

std::string LedgerMaker::taken(std::string_view bytes, std::uint32_t file) {
    return textOf(file).toUtf8(takenOfQuoted(bytes));
}

// What the import takes of the text of a property; empty without the property.
std::string LedgerMaker::textOf(const SourceObject& object, std::string_view property) {
    const SourceValue* value = object.find(property);
    if (value == nullptr) {
        return {};
    }
    const bool isQuoted = value->kind != notation::EventKind::line;
    return textOf(value->file).toUtf8(isQuoted ? takenOfQuoted(value->text) : std::string_view(value->text));
}

void LedgerMaker::drop(SourceObject& object, const Reason& reason, std::string detail) {
    object.dropped = &reason;
    object.object = nullptr;
    object.verdict = {&reason, std::move(detail)};
}

// Notes which line an object was found by; false when it was found by another already.
bool LedgerMaker::claim(const KelObject& object, const SourceObject& by) {
    return claimed_.emplace(&object, by.place.line).second;
}

// Drops what the model does not have.
void LedgerMaker::missing(SourceObject& object, const SourceObject* parent) {
    if (parent != nullptr && parent->dropped != nullptr) {
        return drop(object, parent->dropped->weight == Weight::loss ? *parent->dropped : reasons::within);
    }
    drop(object, mutedBy_ ? reasons::muted : reasons::notInModel, mutedBy_.value_or(""));
}

// The object was found in `holder`, and is expected in `expected`.
void LedgerMaker::take(SourceObject& object, KelObject& found, const KelObject& holder, const KelObject* expected) {
    object.object = &found;
    if (&holder != expected) {
        object.verdict = {&reasons::given, quoted(holder)};
    }
}

// What the import gives a property to.
const KelObject* LedgerMaker::reachOf(const PropertyTally& property) const {
    if (!isReading()) {
        return nullptr;
    }
    switch (property.reach) {
    case Reach::activeObject:
        return active_;
    case Reach::lastClass:
        return lastClass_;
    case Reach::lastOperation:
        return lastOperation_;
    default:
        return nullptr;
    }
}

} // namespace ledger
