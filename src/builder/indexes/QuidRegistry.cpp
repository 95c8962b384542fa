#include "builder/indexes/QuidRegistry.h"

#include "builder/BuilderState.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string_view>
#include <tsl/robin_map.h>

namespace rose::QuidRegistry {

namespace {

/// Where an association with a quid stands in a walk through the packages and their elements. Only the association
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
tsl::robin_map<const KelDesignPackage*, int, KelPointerHash> packagePlaces; // of a front part of `packages`
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
    entryOf.clear();
    packagePlaces.clear();
    nextOrder = 0;
}

} // namespace rose::QuidRegistry
