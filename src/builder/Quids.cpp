#include "builder/Quids.h"

#include "builder/BuilderState.h"
#include "builder/Notes.h"
#include "builder/Trace.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string_view>
#include <tsl/robin_map.h>

namespace rose {

namespace {

const KelAssociation& associationOf(const void* element) {
    return *static_cast<const KelAssociation*>(element);
}

const char* sortText(const KelAssociation& association) {
    const auto* quid = static_cast<const KelString*>(association.generalPointer);
    return quid != nullptr ? quid->text() : association.getName().text();
}

} // namespace

int QuidTree::compare2Object(const void* left, const void* right) const {
    const KelAssociation& first = associationOf(left);
    const KelAssociation& second = associationOf(right);
    if (first.generalPointer != nullptr && second.generalPointer != nullptr) {
        return std::strcmp(sortText(first), sortText(second));
    }
    return std::strcmp(first.getName().text(), second.getName().text());
}

int QuidTree::compare2Key(const void* element, const void* key) const {
    return std::strcmp(sortText(associationOf(element)), static_cast<const KelString*>(key)->text());
}

namespace QuidRegistry {

namespace {

/// An association with a quid, in the order of a linear search of the packages and their elements. Only the association
/// read last gets a quid, so within a package the order of the quids is that of the elements.
struct Entry {
    std::string_view quid; // the text hung on the association
    int package;           // its place in `packages`
    std::uint64_t order;   // in which the quids were hung
    KelAssociation* association;
    bool operator<(const Entry& other) const {
        const int byQuid = quid.compare(other.quid);
        return byQuid != 0 ? byQuid < 0 : std::pair(package, order) < std::pair(other.package, other.order);
    }
};

std::set<Entry> entries;
tsl::robin_map<const KelAssociation*, std::set<Entry>::iterator, KelPointerHash> entryOf;
tsl::robin_map<const KelDesignPackage*, int, KelPointerHash>
    packagePlaces; // of the first packages in `packages`; the others are added when needed
std::uint64_t nextOrder = 0;

/// The package's place in `packages`, or -1.
int placeOf(const KelDesignPackage* package) {
    for (int place = static_cast<int>(packagePlaces.size()); place < state.packages.getCount(); ++place) {
        packagePlaces.emplace(static_cast<const KelDesignPackage*>(state.packages[place]), place);
    }
    const auto found = packagePlaces.find(package);
    return found != packagePlaces.end() ? found->second : -1;
}

void removeEntry(const KelAssociation& association) noexcept {
    const auto found = entryOf.find(&association);
    if (found != entryOf.end()) {
        entries.erase(found->second);
        entryOf.erase(found);
    }
}

void freeQuid(KelAssociation& association) noexcept {
    delete static_cast<KelString*>(association.generalPointer);
    association.generalPointer = nullptr;
}

} // namespace

void hang(KelAssociation& association, const KelString& quid) {
    auto text = std::make_unique<KelString>(quid);
    removeEntry(association);
    freeQuid(association);
    const std::string_view key = text->view();
    association.generalPointer = text.release();
    if (const int package = placeOf(association.getDesignPackage()); package >= 0) {
        entryOf.insert_or_assign(&association, entries.insert({key, package, nextOrder++, &association}).first);
    }
}

KelAssociation* findPlaceholder(const KelString& quid) {
    return static_cast<KelAssociation*>(const_cast<void*>(state.toBeAssociations.findFirst(&quid, nullptr)));
}

KelAssociation* findInPackages(const KelString& quid) {
    const auto found = entries.lower_bound({quid.view(), 0, 0, nullptr});
    return found != entries.end() && found->quid == quid.view() ? found->association : nullptr;
}

void forget(KelAssociation& association) noexcept {
    removeEntry(association);
    freeQuid(association);
}

void clear() noexcept {
    entries.clear();
    decltype(entryOf)().swap(entryOf); // clear() would keep the memory
    decltype(packagePlaces)().swap(packagePlaces);
    nextOrder = 0;
}

} // namespace QuidRegistry

namespace {

/// Moves diagrams, notes and view number of the placeholder to the association, and deletes the placeholder.
void mergePlaceholder(KelAssociation& association, KelAssociation* placeholder) {
    for (KelDiagram* diagram : placeholder->diagrams()) {
        draw(*diagram, association);
    }
    copyNotes(*placeholder, association);
    if (association.toolId == 0) {
        setViewNumber(association, placeholder->toolId);
    }
    trace::replaced(*placeholder, KelImportReason::placeholder, association);
    delete placeholder;
}

} // namespace

void SetQuid(char* quid) {
    if (state.activeObject == nullptr || state.activeObject->elementType != KelElementType::association ||
        state.activeObject->generalPointer != nullptr) {
        return;
    }
    // The active object is the current association whenever it is an association at all.
    auto& association = static_cast<KelAssociation&>(*state.activeObject);
    const KelString text(quid);
    QuidRegistry::hang(association, text);
    if (KelAssociation* placeholder = QuidRegistry::findPlaceholder(text); placeholder != nullptr) {
        mergePlaceholder(association, placeholder);
    }
}

void CreateToolID(char* text) {
    if (state.InCompartment) {
        state.InCompartment = false;
        return;
    }
    const int number = static_cast<int>(std::strtol(text, nullptr, 10));
    if (state.InNoteView) {
        state.currentNoteId.viewId = number;
    } else if (state.activeObject != nullptr) {
        setViewNumber(*state.activeObject, number);
    } else {
        state.physicalId = number;
    }
}

} // namespace rose
