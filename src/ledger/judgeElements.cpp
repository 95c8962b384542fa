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

std::string quoted(const KelObject& object) {
    return '"' + std::string(object.getName().view()) + '"';
}

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
    lastClass_ = found;
    if (found == nullptr) {
        const KelType* type = model_.types().findNamed(KelString(std::string_view(name)));
        if (type == nullptr || type->getTypeValueCount() == 0) {
            return drop(object, reasons::notInModel);
        }
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

void LedgerMaker::beginAttribute(SourceObject& object, const SourceObject* parent) {
    const std::string name = taken(object.name, object.file);
    KelClass* owner = classOf(parent);
    if (parent != nullptr && parent->subject() == Subject::role) {
        const std::string supplier = textOf(*parent, "supplier");
        owner = index_.findClass(classNamed(supplier));
    }
    auto* last = static_cast<KelClass*>(lastClass_);
    for (KelClass* place : {owner, last}) {
        KelAttribute* found =
            place != nullptr ? place->getAttribute(KelString(std::string_view(name)), nullptr) : nullptr;
        if (found == nullptr || claimed_.contains(found)) {
            continue;
        }
        claim(*found, object);
        object.object = found;
        if (place != owner) {
            object.verdict = {&reasons::misplaced, quoted(*place)};
        }
        return;
    }
    if (owner == nullptr) {
        return drop(object, reasons::inNoClass);
    }
    const KelAttribute* same = owner->getAttribute(KelString(std::string_view(name)), nullptr);
    if (same != nullptr) {
        const auto line = claimed_.find(same);
        return drop(object, reasons::duplicate, line != claimed_.end() ? std::to_string(line->second) : "?");
    }
    missing(object);
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
    const KelClass* owner = classOf(parent);
    const auto* last = static_cast<const KelClass*>(lastClass_);
    object.object = owner != nullptr ? index_.takeOperation(*owner, name) : nullptr;
    if (object.object == nullptr && last != nullptr && last != owner) {
        object.object = index_.takeOperation(*last, name);
        object.verdict = {&reasons::misplaced, quoted(*last)};
    }
    if (object.object == nullptr) {
        missing(object);
    }
}

void LedgerMaker::beginParameter(SourceObject& object, const SourceObject* parent) {
    const bool hasOwner = parent != nullptr && parent->object != nullptr &&
                          (parent->subject() == Subject::operation || parent->subject() == Subject::classObject);
    object.object = hasOwner ? index_.takeArgument(*parent->object, taken(object.name, object.file)) : nullptr;
    if (object.object == nullptr) {
        missing(object);
    }
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
