// Associations, their roles, and the other relationships.

#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"
#include "ledger/LedgerMaker.h"
#include "ledger/reasons.h"

#include <algorithm>

namespace ledger {

namespace {

constexpr std::string_view unnamedMark = "$UNNAMED$";

/// The name that the import gives: none for one that the tool made up.
std::string_view importedName(std::string_view name) {
    return name.starts_with(unnamedMark) ? std::string_view() : name;
}

KelElementType typeOf(const SourceObject& object) {
    return object.subject() == Subject::generalization ? KelElementType::generalization
           : object.subject() == Subject::realization  ? KelElementType::realization
                                                       : KelElementType::dependency;
}

bool isRole(const SourceObject& object) {
    return object.subject() == Subject::role;
}

} // namespace

void LedgerMaker::finishAssociation(SourceObject& object, const SourceObject* parent) {
    std::string signature;
    ModelIndex::addToSignature(signature, importedName(taken(object.name, object.file)));
    for (const SourceObject& role : object.held) {
        if (isRole(role)) {
            ModelIndex::addToSignature(signature, importedName(taken(role.name, role.file)));
            ModelIndex::addToSignature(signature, classNamed(textOf(role, "supplier")));
        }
    }
    KelAssociation* found = index_.takeAssociation(signature);
    if (found == nullptr) {
        object.verdict = whyNoAssociation(object);
        object.dropped = object.verdict.reason;
        settleHeld(object,
                   object.verdict.reason->weight == Weight::loss ? object.verdict : Verdict{&reasons::within, {}});
        return;
    }
    object.object = found;
    if (object.name.starts_with(unnamedMark)) {
        object.verdict.reason = &reasons::nameCleared;
    }
    placed(object, parent);
    if (const SourceValue* quid = object.find("quid")) {
        associations_.emplace(quid->text, found);
    }
    finishRoles(object);
}

void LedgerMaker::finishRoles(SourceObject& object) {
    const auto roles = static_cast<const KelAssociation&>(*object.object).associationRoles();
    int next = 0;
    for (SourceObject& held : object.held) {
        if (!isRole(held)) {
            continue;
        }
        held.object = roles[next++];
        held.verdict.reason = held.name.starts_with(unnamedMark) ? &reasons::nameCleared : &reasons::kept;
        if (!held.name.starts_with(unnamedMark) && takenOfQuoted(held.name) != held.name) {
            held.verdict = {&reasons::nameCut, std::string(held.object->getName().view())};
        }
    }
    active_ = next > 0 ? roles[next - 1] : nullptr;
    settleHeld(object, {&reasons::kept, {}});
}

Verdict LedgerMaker::whyNoAssociation(const SourceObject& object) {
    if (!started_) {
        return {&reasons::outsideLogicalView, {}};
    }
    if (std::ranges::count_if(object.held, isRole) < 2) {
        return {&reasons::tooFewEnds, {}};
    }
    for (const SourceObject& role : object.held) {
        if (isRole(role) && textOf(role, "supplier").empty()) {
            return {&reasons::endWithoutClass, {}};
        }
    }
    return {&reasons::notInModel, {}};
}

// A relationship goes out from the class that the import came upon last.
void LedgerMaker::finishRelationship(SourceObject& object, const SourceObject* parent) {
    const std::string text = textOf(object, "supplier");
    const std::string_view name = classNamed(text);
    KelClass* supplier = name.empty() ? nullptr : index_.findClass(name);
    const bool inClass = parent != nullptr && parent->subject() == Subject::classObject;
    KelClass* owner = inClass ? static_cast<KelClass*>(parent->object) : nullptr;
    for (const KelClass* client : {lastClass_, owner}) {
        KelObject* found = client != nullptr && supplier != nullptr
                               ? index_.takeRelationship(typeOf(object), *client, *supplier)
                               : nullptr;
        if (found != nullptr) {
            active_ = found;
            return take(object, *found, *client, owner);
        }
    }
    if (parent != nullptr && parent->dropped != nullptr) {
        return missing(object, parent);
    }
    if (owner == nullptr) {
        return drop(object, reasons::inNoClass);
    }
    if (name.empty()) {
        return drop(object, reasons::withoutSupplier);
    }
    if (supplier == nullptr || supplier->getDesignPackage() == index_.homeOfNamed()) {
        return drop(object, reasons::supplierUnknown, std::string(name));
    }
    missing(object, parent);
}

// Whether the package that holds the object in the file holds it in the model.
void LedgerMaker::placed(SourceObject& object, const SourceObject* parent) {
    const KelDesignPackage* package = static_cast<const KelModelElement&>(*object.object).getDesignPackage();
    const bool isElsewhere =
        parent != nullptr && parent->subject() == Subject::package && package != parent->object && package != nullptr;
    if (isElsewhere) {
        object.verdict = {&reasons::misplaced, quoted(*package)};
    }
}

} // namespace ledger
