// The outcome of objects.

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelType.h"
#include "ledger/LedgerMerge.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>

namespace ledger {

using source::Effect;
using source::EffectKind;
using source::Fate;
using source::ObjectNumber;

namespace {

/// The ledger's reason for each reason of the plug-in.
struct ReasonRow {
    KelImportReason why;
    const Reason* reason;
};
constexpr auto reasonRows = std::to_array<ReasonRow>({
    {KelImportReason::beforeLogicalView, &reasons::outsideLogicalView},
    {KelImportReason::noPackage, &reasons::packageClosed},
    {KelImportReason::inMechanism, &reasons::muted},
    {KelImportReason::inUseCaseView, &reasons::outsideLogicalView},
    {KelImportReason::noOwner, &reasons::refusedByOwner},
    {KelImportReason::noClass, &reasons::inNoClass},
    {KelImportReason::noAssociation, &reasons::inNoAssociation},
    {KelImportReason::noDiagram, &reasons::within},
    {KelImportReason::nothingActive, &reasons::nothingActive},
    {KelImportReason::nameTaken, &reasons::duplicate},
    {KelImportReason::takesNoArguments, &reasons::takesNoArguments},
    {KelImportReason::drawnAlready, &reasons::drawnTwice},
    {KelImportReason::endNotDrawn, &reasons::endNotDrawn},
    {KelImportReason::nothingToShow, &reasons::nothingToShow},
    {KelImportReason::tooFewEnds, &reasons::tooFewEnds},
    {KelImportReason::endWithoutClass, &reasons::endWithoutClass},
    {KelImportReason::literalsUnusable, &reasons::valueUnknown},
    {KelImportReason::valueUnknown, &reasons::valueUnknown},
    {KelImportReason::becameEnumeration, &reasons::inEnumeration},
    {KelImportReason::noSupplier, &reasons::withoutSupplier},
    {KelImportReason::supplierUnknown, &reasons::supplierUnknown},
    {KelImportReason::withOwner, &reasons::withAssociation},
});

const Reason& reasonFor(KelImportReason why) {
    const auto* row = std::ranges::find(reasonRows, why, &ReasonRow::why);
    return row != reasonRows.end() ? *row->reason : reasons::notRecognised;
}

/// The type of the model's objects that are made from objects of a subject.
KelElementType typeOf(Subject subject) {
    struct Row {
        Subject subject;
        KelElementType type;
    };
    static constexpr auto rows = std::to_array<Row>({
        {Subject::package, KelElementType::designPackage},
        {Subject::classObject, KelElementType::classObject},
        {Subject::attribute, KelElementType::attribute},
        {Subject::operation, KelElementType::operation},
        {Subject::parameter, KelElementType::argument},
        {Subject::association, KelElementType::association},
        {Subject::role, KelElementType::associationRole},
        {Subject::generalization, KelElementType::generalization},
        {Subject::realization, KelElementType::realization},
        {Subject::dependency, KelElementType::dependency},
        {Subject::classDiagram, KelElementType::classDiagram},
    });
    const auto* row = std::ranges::find(rows, subject, &Row::subject);
    return row != rows.end() ? row->type : KelElementType::object;
}

bool isDrawnRelation(Subject subject) {
    return subject >= Subject::associationView && subject <= Subject::dependencyView;
}

template <class Kind>
const Kind& as(const OpenObject& object) {
    return static_cast<const Kind&>(*object.own);
}

/// The class at the start of a relationship.
const KelObject* clientOf(const OpenObject& relationship) {
    switch (relationship.subject()) {
    case Subject::generalization:
        return as<KelGeneralization>(relationship).subtypeClasses().first();
    case Subject::realization:
        return as<KelRealization>(relationship).getRealizationClass();
    default:
        return as<KelDependency>(relationship).getClientClass();
    }
}

/// The container of the object in the model; for objects that files place in packages, the package.
const KelObject* holderOf(const OpenObject& object) {
    switch (object.subject()) {
    case Subject::package: {
        const KelObject* package = as<KelDesignPackage>(object).getParentPackage();
        return package != nullptr && package->elementType != KelElementType::model ? package : nullptr;
    }
    case Subject::classObject:
        return as<KelClass>(object).getDesignPackage();
    case Subject::association:
        return as<KelAssociation>(object).getDesignPackage();
    case Subject::classDiagram:
        return as<KelClassDiagram>(object).getDesignPackage();
    case Subject::attribute:
        return as<KelAttribute>(object).getAssociatedClass();
    case Subject::operation:
        return as<KelOperation>(object).getAssociatedClass();
    case Subject::role:
        return as<KelAssociationRole>(object).getAssociation();
    case Subject::parameter: {
        const auto& argument = as<KelArgument>(object);
        return argument.getOperation() != nullptr ? static_cast<const KelObject*>(argument.getOperation())
                                                  : argument.getAssociatedClass();
    }
    default:
        return clientOf(object);
    }
}

/// The container that the object should have by its place in the file; null if there is none.
const KelObject* expectedHolder(const OpenObject& object, const OpenObject* parent) {
    if (parent == nullptr || parent->own == nullptr) {
        return nullptr;
    }
    if (object.subject() == Subject::attribute && parent->subject() == Subject::role) {
        return as<KelAssociationRole>(*parent).getAssociatedClass(); // of a qualifier
    }
    return parent->own->elementType == KelElementType::model ? nullptr : parent->own;
}

bool isPlacedInPackage(Subject subject) {
    return subject == Subject::package || subject == Subject::classObject || subject == Subject::association ||
           subject == Subject::classDiagram;
}

} // namespace

bool isLate(Subject subject) {
    return isDrawnRelation(subject) || subject == Subject::noteView || subject == Subject::attachView ||
           subject == Subject::label || subject == Subject::diagramLabel;
}

void LedgerMerge::judgeHead(OpenObject& object, OpenObject* parent, Effects effects) {
    const KindRow& row = *object.kind->row;
    object.verdict.reason = &reasons::kept;
    if (object.unit != nullptr && object.unit->state == units::UnitState::found) {
        object.verdict = {&reasons::readFromUnit, object.unit->path.string()};
    } else if (row.subject == Subject::none) {
        drop(object, row.reason);
    } else if (row.subject == Subject::treeView ||
               (row.subject == Subject::label && (parent == nullptr || parent->subject() != Subject::noteView))) {
        missing(object, parent, row.reason);
    } else if (row.subject == Subject::header || row.subject == Subject::design) {
        object.own = const_cast<KelModel*>(&model_);
    } else if (row.subject == Subject::operationText) {
        object.own = parent != nullptr && parent->subject() == Subject::operation ? parent->own : nullptr;
        if (object.own == nullptr) {
            missing(object, parent, reasons::within);
        }
    } else if (row.subject == Subject::classView) {
        judgeClassView(object, parent, effects);
    } else if (!isLate(row.subject)) {
        const auto made = std::ranges::find_if(effects, [&](const Effect& effect) {
            return effect.kind == EffectKind::made && trace_.getFate(effect.object).type == typeOf(row.subject);
        });
        made != effects.end() ? judgeMade(object, parent, made->object) : judgeUnmade(object, parent, effects);
    }
    if (object.verdict.reason == &reasons::kept && takenOfQuoted(object.name) != object.name && !isLate(row.subject)) {
        object.verdict = {&reasons::nameCut, taken(object.name, object.file)};
    }
    // The outcome of a package depends on properties: its content may be elsewhere.
    if ((!isLate(row.subject) || object.dropped != nullptr) && row.subject != Subject::package) {
        tell(object);
    } else if (sink_ != nullptr && !object.isImplied) {
        object.entry = waiting_.nextNumber();
        object.hasEntry = true;
        addEntry(object, nullptr, object.place);
    }
}

void LedgerMerge::judgeMade(OpenObject& object, const OpenObject* parent, ObjectNumber number) {
    const Fate& fate = trace_.getFate(number);
    if (fate.object == nullptr) {
        return judgeGone(object, parent, number);
    }
    claim(object, number);
    judgePlace(object, parent, fate);
}

// The import made the object and removed it again.
void LedgerMerge::judgeGone(OpenObject& object, const OpenObject* parent, ObjectNumber number) {
    const Fate& fate = trace_.getFate(number);
    lines_[number] = object.place.line;
    if (fate.end == KelImportReason::becameEnumeration && fate.isReplaced) {
        drop(object, reasons::inEnumeration);
        object.verdict = {&reasons::becameType, {}};
        return;
    }
    if (fate.end == KelImportReason::supplierUnknown) {
        const KelObject* supplier = trace_.find(fate.linked);
        return drop(object, reasons::supplierUnknown,
                    supplier != nullptr ? std::string(supplier->getName().view()) : std::string());
    }
    const bool isRefused = fate.end == KelImportReason::attachedToNothing;
    const KelImportReason why = isRefused ? fate.refusal : fate.end;
    const ObjectNumber obstacle = fate.isReplaced ? fate.heir : fate.obstacle;
    const Verdict verdict = refusal(why, obstacle, parent);
    drop(object, *verdict.reason, verdict.detail);
}

// Decides whether the model has the object at its place in the file, and unchanged.
void LedgerMerge::judgePlace(OpenObject& object, const OpenObject* parent, const Fate& fate) {
    const KelObject* holder = holderOf(object);
    const KelObject* expected = expectedHolder(object, parent);
    if (isPlacedInPackage(object.subject())) {
        const bool isInPackage = parent != nullptr && parent->subject() == Subject::package;
        const bool isNested = object.subject() == Subject::classObject || object.subject() == Subject::association;
        if (holder != expected && (isInPackage || !isNested)) {
            object.verdict = {&reasons::misplaced, quoted(holder != nullptr ? *holder : model_)};
            return;
        }
    } else if (holder != expected && holder != nullptr) {
        object.verdict = {&reasons::given, quoted(*holder)};
        return;
    }
    const units::RenamedRoot* root = choices_.root;
    if (root != nullptr && object.file == root->file && object.place.offset == root->head.place.offset) {
        object.verdict.reason = &reasons::rootPresented;
    } else if (fate.copy != 0 && trace_.find(fate.copy) != nullptr) {
        object.verdict = {&reasons::attributeSplit, quoted(*trace_.find(fate.copy))};
    } else if (fate.isDefaulted) {
        object.verdict = {&reasons::typeDefaulted, typeName(*object.own)};
    } else if (fate.isNameCleared) {
        object.verdict.reason = &reasons::nameCleared;
    }
}

// The import made no object.
void LedgerMerge::judgeUnmade(OpenObject& object, const OpenObject* parent, Effects effects) {
    for (const Effect& effect : effects) {
        if (effect.why == KelImportReason::definedTwice && object.subject() == Subject::classObject) {
            const std::string line = lineOf(effect.object);
            claim(object, effect.object);
            object.verdict = {&reasons::merged, line};
            return object.own == nullptr ? missing(object, parent, reasons::within) : void();
        }
        if (effect.kind == EffectKind::refused && effect.why != KelImportReason::nothingActive) {
            const bool isRoot = object.isRoot && object.subject() == Subject::package;
            if (isRoot && effect.why == KelImportReason::beforeLogicalView) {
                return drop(object, reasons::rootRenamed);
            }
            const Verdict verdict = refusal(effect.why, effect.other, parent);
            return drop(object, *verdict.reason, verdict.detail);
        }
    }
    const bool isContained = parent != nullptr && parent->dropped != nullptr;
    const bool isLost = isContained && parent->dropped->weight == Weight::loss;
    const bool isOutside =
        gate_ == KelImportReason::beforeLogicalView || (gate_ == KelImportReason::noPackage && isContained);
    if (isOutside && object.subject() == Subject::classObject &&
        onlyNamed_.contains(std::string(classNamed(taken(object.name, object.file))))) {
        drop(object, reasons::outsideLogicalView);
        object.verdict.reason = &reasons::nameOnly;
    } else if (isOutside && !isLost && isPlacedInPackage(object.subject())) {
        drop(object, reasons::outsideLogicalView);
    } else {
        missing(object, parent, gate_ != KelImportReason::none ? reasonFor(gate_) : reasons::notRecognised);
    }
}

void LedgerMerge::judgeClassView(OpenObject& view, const OpenObject* parent, Effects effects) {
    const auto step = std::ranges::find_if(effects, [](const Effect& effect) {
        return (effect.kind == EffectKind::changed && effect.other != 0) || effect.kind == EffectKind::refused;
    });
    if (step == effects.end()) {
        if (parent != nullptr && parent->dropped == nullptr && gate_ != KelImportReason::none) {
            return drop(view, reasonFor(gate_), gateDetail_);
        }
        return missing(view, parent, reasons::notRecognised);
    }
    if (step->why == KelImportReason::noDiagram) {
        return missing(view, parent, reasons::within);
    }
    const bool isRefused = step->kind == EffectKind::refused;
    const ObjectNumber shownNumber = isRefused ? step->object : step->other;
    const KelObject* diagram = trace_.find(isRefused ? step->other : step->object);
    KelObject* shown = trace_.find(shownNumber);
    const bool isShown = shown != nullptr && diagram != nullptr && shown->elementType == KelElementType::classObject;
    if (!isShown) {
        return parent != nullptr && parent->dropped != nullptr ? missing(view, parent, reasons::within)
                                                               : drop(view, reasons::nothingToShow);
    }
    view.own = shown;
    if (parent == nullptr || parent->own != diagram) {
        view.verdict = {&reasons::given, quoted(*diagram)};
    } else if (isRefused) {
        view.verdict.reason = &reasons::drawnTwice;
    } else if (trace_.getFate(trace_.heirOf(shownNumber)).isOnlyNamed) {
        view.verdict.reason = &reasons::amongNamed;
    }
}

// Takes a step of one of the view's properties if it decides the outcome of the view; returns whether it does.
bool LedgerMerge::hear(OpenObject& view, const Effect& effect) {
    if (!isLate(view.subject()) || view.dropped != nullptr) {
        return false;
    }
    KelObject* object = trace_.find(effect.object);
    KelObject* other = trace_.find(effect.other);
    if (effect.kind == EffectKind::refused) {
        view.refusal = view.refusal == KelImportReason::none ? effect.why : view.refusal;
        if (effect.why == KelImportReason::drawnAlready && view.own == nullptr) {
            view.own = object;
            view.holder = other;
        }
        return isDrawnRelation(view.subject()) || view.subject() == Subject::attachView;
    }
    if (effect.kind != EffectKind::changed || object == nullptr) {
        return false;
    }
    if (isDrawnRelation(view.subject()) && object->elementType == KelElementType::classDiagram && effect.other != 0) {
        if (other != nullptr &&
            static_cast<KelDiagram*>(object)->modelElements().holds(static_cast<const KelModelElement&>(*other))) {
            view.own = other;
            view.holder = object;
            view.refusal = KelImportReason::none;
        }
        return true;
    }
    if (view.subject() == Subject::attachView && other != nullptr && other->elementType == KelElementType::note) {
        view.own = other;
        view.holder = object;
        view.refusal = effect.why;
        view.note = trace_.heirOf(effect.other);
        return true;
    }
    if (view.subject() == Subject::diagramLabel && object->elementType == KelElementType::classDiagram) {
        view.own = object;
    }
    return false;
}

// Records that the text of a note is in the model.
void LedgerMerge::noteText(OpenObject& owner, ObjectNumber number) {
    KelObject* const first = owner.own; // attached several times, a text becomes several notes
    claim(owner, number);
    owner.own = first != nullptr ? first : owner.own;
    OpenObject* const view = owner.subject() == Subject::label ? parent() : &owner;
    if (view != nullptr) { // a label that is not dropped is in a note's view
        view->own = owner.own;
        noteNumbers_.emplace(trace_.heirOf(number), view->reference);
    }
}

void LedgerMerge::judgeEnd(OpenObject& object, OpenObject* parent) {
    if (!object.isWaiting || object.dropped != nullptr) {
        return;
    }
    switch (object.subject()) {
    case Subject::label:
        object.own != nullptr ? void(object.verdict.reason = &reasons::noteText)
                              : drop(object, object.kind->row->reason);
        return;
    case Subject::diagramLabel:
        return object.own == nullptr ? missing(object, parent, reasons::layout) : void();
    case Subject::noteView:
    case Subject::attachView:
        return judgeNote(object, parent);
    default:
        return isDrawnRelation(object.subject()) ? judgeShown(object, parent) : void();
    }
}

void LedgerMerge::judgeShown(OpenObject& view, const OpenObject* parent) {
    const bool isAstray = parent == nullptr || (view.holder != nullptr && parent->own != view.holder);
    if (view.own != nullptr) {
        if (isAstray) {
            view.verdict = {&reasons::given, quoted(*view.holder)};
        } else if (view.refusal == KelImportReason::drawnAlready) {
            view.verdict.reason = &reasons::drawnTwice;
        }
        return;
    }
    if (parent != nullptr && parent->dropped == nullptr && gate_ != KelImportReason::none) {
        return drop(view, reasonFor(gate_), gateDetail_);
    }
    const bool isKnown = view.refusal == KelImportReason::endNotDrawn;
    missing(view, parent, isKnown ? reasons::endNotDrawn : reasons::nothingToShow);
}

void LedgerMerge::judgeNote(OpenObject& note, const OpenObject* parent) {
    if (note.own == nullptr) {
        const bool isView = note.subject() == Subject::noteView;
        return missing(note, parent, isView ? reasons::attachedToNothing : reasons::nothingToShow);
    }
    const KelElement* holder = static_cast<const KelNote&>(*note.own).getElement();
    const KelObject* diagram = parent != nullptr ? parent->own : nullptr;
    if (note.subject() == Subject::attachView) {
        const std::uint64_t line = lines_[note.note];
        const auto number = noteNumbers_.find(note.note);
        const bool isMeant = number != noteNumbers_.end() && !number->second.empty() &&
                             (number->second == note.client || number->second == note.supplier);
        const bool isHere = parent != nullptr && line > parent->place.line;
        if (diagram == nullptr) {
            note.verdict = {&reasons::given, quoted(*holder)};
        } else if (line != 0 && (!isMeant || !isHere)) {
            note.verdict = {&reasons::noteOfOther, std::to_string(line)};
        } else if (note.refusal == KelImportReason::attachedToDiagram) {
            note.verdict.reason = &reasons::noteOnDiagram;
        }
        return;
    }
    const bool isHere =
        holder == diagram || (diagram != nullptr && diagram->elementType == KelElementType::classDiagram &&
                              holder->elementType != KelElementType::classDiagram &&
                              static_cast<const KelClassDiagram*>(diagram)->modelElements().holds(
                                  static_cast<const KelModelElement&>(*holder)));
    if (!isHere && holder != nullptr) {
        note.verdict = {&reasons::misplaced, quoted(*holder)};
    }
}

// Records properties that decide the outcome of their object: the content of a package, the ends of an attachment.
void LedgerMerge::noteValue(OpenObject& owner) {
    const std::string& name = property_.tally->name;
    const std::string& value = property_.start;
    if (owner.subject() == Subject::package) {
        if (name == "is_unit") {
            owner.isUnit = value == "TRUE";
        } else if (name == "is_loaded") {
            owner.isLoaded = value != "FALSE";
        } else if (name == "file_name") {
            owner.fileName = takenOfQuoted(value);
        }
    } else if (owner.subject() == Subject::attachView) {
        if (name == "client") {
            owner.client = value;
        } else if (name == "supplier") {
            owner.supplier = value;
        }
    }
}

void LedgerMerge::judgeUnit(OpenObject& package) {
    if (package.dropped != nullptr || package.verdict.reason == &reasons::readFromUnit) {
        return;
    }
    if (package.unit != nullptr && package.unit->state == units::UnitState::repeated) {
        package.verdict = {&reasons::unitRepeated, package.unit->path.string()};
    } else if (package.isUnit && !package.isLoaded) {
        package.verdict = {&reasons::unitNotRead, textOf(package.file).toUtf8(package.fileName)};
    }
}

void LedgerMerge::claim(OpenObject& object, ObjectNumber number) {
    const ObjectNumber heir = trace_.heirOf(number);
    object.own = trace_.getFate(heir).object;
    for (const ObjectNumber known : {number, heir}) {
        isTold_[known] = true;
        lines_[known] = lines_[known] == 0 ? object.place.line : lines_[known];
    }
}

void LedgerMerge::drop(OpenObject& object, const Reason& reason, std::string detail) {
    object.dropped = &reason;
    object.own = nullptr;
    object.verdict = {&reason, std::move(detail)};
}

// Drops an object because its container was dropped, otherwise for another reason.
void LedgerMerge::missing(OpenObject& object, const OpenObject* parent, const Reason& otherwise) {
    if (parent != nullptr && parent->dropped != nullptr) {
        return drop(object, parent->dropped->weight == Weight::loss ? *parent->dropped : reasons::within,
                    parent->dropped->weight == Weight::loss ? parent->verdict.detail : std::string());
    }
    drop(object, otherwise, &otherwise == &reasons::muted ? gateDetail_ : std::string());
}

Verdict LedgerMerge::refusal(KelImportReason why, ObjectNumber obstacle, const OpenObject* parent) {
    const Reason& reason = reasonFor(why);
    const bool isContained = parent != nullptr && parent->dropped != nullptr;
    if (isContained && parent->dropped->weight == Weight::loss && why != KelImportReason::nameTaken) {
        return {parent->dropped, parent->verdict.detail};
    }
    if (isContained && why != KelImportReason::nameTaken && &reason != &reasons::outsideLogicalView) {
        return {&reasons::within, {}};
    }
    if (&reason == &reasons::duplicate) {
        return {&reason, lineOf(obstacle)};
    }
    if (&reason == &reasons::muted) {
        return {&reason, gateDetail_};
    }
    const KelObject* object = &reason == &reasons::nothingActive ? trace_.find(obstacle) : nullptr;
    return {&reason, object != nullptr ? quoted(*object) : std::string()};
}

std::string LedgerMerge::lineOf(ObjectNumber number) const {
    const std::uint64_t line = std::max(lines_[number], lines_[trace_.heirOf(number)]);
    return line != 0 ? std::to_string(line) : std::string("?");
}

// Keywords have no effect from the current object on, or have effect again.
void LedgerMerge::noteGate(const Effect& effect) {
    gate_ = effect.why;
    gateDetail_.clear();
    if (const OpenObject* object = innermost(); gate_ == KelImportReason::inMechanism && object != nullptr) {
        gateDetail_ = object->kind->name + " at line " + std::to_string(object->place.line);
    }
}

} // namespace ledger
