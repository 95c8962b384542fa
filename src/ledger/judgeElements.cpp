// Packages, classes and what belongs to them.

#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelKey.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "ledger/LedgerMaker.h"
#include "ledger/reasons.h"

namespace ledger {

namespace {

constexpr std::string_view rootPackage = "Logical View";
constexpr std::string_view useCaseView = "Use Case View"; // which the import leaves out wherever it stands

std::string placeOf(const KelModelElement& element) {
    const KelDesignPackage* package = element.getDesignPackage();
    return package != nullptr ? quoted(*package) : "no package";
}

KelClass* classOf(const SourceObject* object) {
    return object != nullptr && object->subject() == Subject::classObject ? static_cast<KelClass*>(object->object)
                                                                          : nullptr;
}

} // namespace

void LedgerMaker::beginPackage(SourceObject& object, const SourceObject* parent) {
    const std::string name = taken(object.name, object.file);
    started_ = started_ || name == rootPackage;
    if (!started_ && model_.childPackages().findNamed(KelString(std::string_view(name))) == nullptr) {
        return drop(object, reasons::outsideLogicalView);
    }
    const bool inPackage = parent != nullptr && parent->subject() == Subject::package && parent->object != nullptr;
    const auto& owner = inPackage ? static_cast<const KelPackage&>(*parent->object) : model_;
    started_ = true;
    KelPackage* found = index_.takePackage(owner, name);
    object.verdict.reason = &reasons::kept;
    while (found == nullptr || claimed_.contains(found)) {
        found = index_.takePackageAnywhere(name);
        if (found == nullptr) {
            const bool isOutside = name == useCaseView || (parent != nullptr && parent->dropped != nullptr);
            return drop(object, isOutside ? reasons::outsideLogicalView : reasons::notInModel);
        }
        const KelPackage* holder = found->getParentPackage();
        object.verdict = {&reasons::misplaced, holder != nullptr ? quoted(*holder) : "no package"};
    }
    claim(*found, object);
    object.object = found;
    active_ = found;
    lastDiagram_ = nullptr;
}

void LedgerMaker::finishPackage(SourceObject& object) {
    if (object.unit != nullptr && object.unit->state == units::UnitState::repeated) {
        object.verdict = {&reasons::unitRepeated, object.unit->path.string()};
        return;
    }
    const SourceValue* isUnit = object.find("is_unit");
    const SourceValue* isLoaded = object.find("is_loaded");
    if (isUnit != nullptr && isLoaded != nullptr && isUnit->text == "TRUE" && isLoaded->text == "FALSE") {
        object.verdict = {&reasons::unitNotRead, textOf(object, "file_name")};
    }
}

void LedgerMaker::beginClass(SourceObject& object, const SourceObject* parent) {
    const std::string name(classNamed(taken(object.name, object.file)));
    KelClass* found = index_.findClass(name);
    const bool isHomeless = found != nullptr && found->getDesignPackage() == index_.homeOfNamed();
    if (!started_ || (isHomeless && parent != nullptr && parent->dropped != nullptr)) {
        drop(object, reasons::outsideLogicalView);
        object.verdict.reason = isHomeless ? &reasons::nameOnly : &reasons::outsideLogicalView;
        return;
    }
    if (found == nullptr) {
        const KelType* type = model_.types().findNamed(KelString(std::string_view(name)));
        if (type == nullptr || type->getTypeValueCount() == 0) {
            return drop(object, reasons::notInModel); // what stands in it goes to the class in front of it
        }
    }
    lastClass_ = found;
    lastOperation_ = nullptr;
    active_ = found;
    if (found == nullptr) {
        drop(object, reasons::inEnumeration);
        object.verdict.reason = &reasons::becameType;
        return;
    }
    object.object = found;
    if (!claim(*found, object)) {
        object.verdict = {&reasons::merged, std::to_string(claimed_.at(found))};
    } else if (parent != nullptr && parent->subject() == Subject::package &&
               found->getDesignPackage() != parent->object) {
        object.verdict = {&reasons::misplaced, placeOf(*found)};
    }
}

// An attribute goes to the class that the import came upon last, but a qualifier to that of its role.
void LedgerMaker::beginAttribute(SourceObject& object, const SourceObject* parent) {
    const std::string name = taken(object.name, object.file);
    const auto attributeOf = [&](const KelClass* owner) {
        return owner != nullptr ? owner->getAttribute(KelString(std::string_view(name)), nullptr) : nullptr;
    };
    KelClass* owner = classOf(parent);
    KelClass* taker = lastClass_;
    if (parent != nullptr && parent->subject() == Subject::role) {
        const std::string supplier = textOf(*parent, "supplier");
        owner = index_.findClass(classNamed(supplier));
        taker = owner;
    }
    if (attributeOf(taker) == nullptr) {
        taker = attributeOf(owner) != nullptr ? owner : lastClass_;
    }
    active_ = nullptr; // what follows one that is refused is lost with it
    KelAttribute* found = attributeOf(taker);
    if (found != nullptr && claim(*found, object)) {
        active_ = found;
        return take(object, *found, *taker, owner);
    }
    if (parent != nullptr && parent->dropped != nullptr && (found == nullptr || owner == nullptr)) {
        return missing(object, parent);
    }
    if (owner == nullptr && taker == nullptr) {
        return drop(object, reasons::inNoClass);
    }
    if (found != nullptr) {
        return drop(object, reasons::duplicate, std::to_string(claimed_.at(found)));
    }
    missing(object, parent);
}

void LedgerMaker::finishAttribute(SourceObject& object) {
    finishTyped(object, "type");
    const auto* attribute = static_cast<const KelAttribute*>(object.object);
    const KelClass* owner = attribute->getAssociatedClass();
    if (attribute->keys().isEmpty() || owner == nullptr || object.verdict.reason != &reasons::kept) {
        return;
    }
    const KelString copyName = attribute->getName() + "/1";
    const KelAttribute* copy = owner->getAttribute(copyName, nullptr);
    if (copy != nullptr && !copy->keys().isEmpty()) {
        object.verdict = {&reasons::attributeSplit, quoted(*copy)};
    }
}

void LedgerMaker::beginOperation(SourceObject& object, const SourceObject* parent) {
    const std::string name = taken(object.name, object.file);
    KelClass* owner = classOf(parent);
    lastOperation_ = nullptr;
    active_ = nullptr;
    for (const KelClass* taker : {lastClass_, owner}) {
        lastOperation_ = taker != nullptr ? index_.takeOperation(*taker, name) : nullptr;
        if (lastOperation_ != nullptr) {
            active_ = lastOperation_;
            return take(object, *lastOperation_, *taker, owner);
        }
    }
    missing(object, parent);
}

// A parameter goes to the operation that the import came upon last, and without one to the class.
void LedgerMaker::beginParameter(SourceObject& object, const SourceObject* parent) {
    const std::string name = taken(object.name, object.file);
    const bool isOwned = parent != nullptr && (parent->subject() == Subject::operation || classOf(parent) != nullptr);
    const KelObject* owner = isOwned ? parent->object : nullptr;
    active_ = nullptr;
    for (const KelObject* taker : {static_cast<const KelObject*>(lastOperation_), owner}) {
        KelArgument* found = taker != nullptr ? index_.takeArgument(*taker, name) : nullptr;
        if (found != nullptr) {
            active_ = found;
            return take(object, *found, *taker, owner);
        }
    }
    missing(object, parent);
}

// What has no type, or an empty one, in the file has one in the model.
void LedgerMaker::finishTyped(SourceObject& object, std::string_view property) {
    const KelObject& typed = *object.object;
    const KelType* type =
        typed.elementType == KelElementType::attribute  ? static_cast<const KelAttribute&>(typed).getType()
        : typed.elementType == KelElementType::argument ? static_cast<const KelArgument&>(typed).getType()
                                                        : static_cast<const KelOperation&>(typed).getReturnType();
    if (object.find(property) == nullptr && type != nullptr && object.verdict.reason == &reasons::kept) {
        object.verdict = {&reasons::typeDefaulted, quoted(*type)};
    }
}

} // namespace ledger
