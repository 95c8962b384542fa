#include "host/model/links/KelMany.h"

#include "host/model/links/KelFewLinks.h"

namespace {

/// The array of every empty end.
const KelArrayInterface& nothing() {
    static const std::unique_ptr<KelFewLinks> none = KelFewLinks::make(KelOrder::byAdding, 0);
    return *none;
}

} // namespace

KelMany::~KelMany() {
    delete collection();
}

KelOrder KelMany::order() const noexcept {
    return (word_ & byNameBit) != 0 ? KelOrder::byName : KelOrder::byAdding;
}

void KelMany::hold(KelObject* single) const noexcept {
    delete collection();
    word_ = reinterpret_cast<std::uintptr_t>(single) | (word_ & byNameBit);
}

void KelMany::hold(std::unique_ptr<KelLinkCollection> collection) const noexcept {
    delete this->collection();
    word_ = reinterpret_cast<std::uintptr_t>(collection.release()) | collectionBit | (word_ & byNameBit);
}

bool KelMany::holds(const KelObject& object) const {
    const KelLinkCollection* several = collection();
    return several != nullptr ? several->holds(object) : single() == &object;
}

int KelMany::indexOf(const KelObject& object) const {
    const KelLinkCollection* several = collection();
    if (several != nullptr) {
        return several->findFirstElement(&object);
    }
    return single() == &object ? 0 : -1;
}

int KelMany::indexOfName(const KelString& name, int from) const {
    const KelLinkCollection* several = collection();
    if (several != nullptr) {
        return several->indexOfName(name, from);
    }
    const KelObject* only = single();
    return only != nullptr && from <= 0 && only->getName() == name ? 0 : -1;
}

KelObject* KelMany::firstNamed(const KelString& name) const {
    const KelLinkCollection* several = collection();
    if (several != nullptr) {
        return several->firstNamed(name);
    }
    KelObject* only = single();
    return only != nullptr && only->getName() == name ? only : nullptr;
}

const KelArrayInterface& KelMany::array() const {
    if (collection() == nullptr) {
        KelObject* only = single();
        if (only == nullptr) {
            return nothing();
        }
        auto several = KelLinkCollection::make(order(), 1);
        several->insert(*only);
        hold(std::move(several));
    }
    return *collection();
}

KelLinkCollection& KelMany::growing() {
    KelLinkCollection* now = collection();
    if (now != nullptr && !now->isFull()) {
        return *now;
    }
    const int held = count();
    auto larger = KelLinkCollection::make(order(), held + 1);
    for (int index = 0; index < held; ++index) {
        larger->insert(*at(index));
    }
    hold(std::move(larger));
    return *collection();
}

void KelMany::insert(KelObject& object) {
    if (count() == 0) {
        hold(&object);
    } else {
        growing().insert(object);
    }
}

void KelMany::erase(KelObject& object) noexcept {
    if (KelLinkCollection* several = collection(); several != nullptr) {
        several->erase(object);
    }
    if (count() == 0 || single() != nullptr) {
        hold(nullptr);
    }
}

void KelMany::beforeRename(KelObject& object) const noexcept {
    if (KelLinkCollection* several = collection(); several != nullptr) {
        several->beforeRename(object);
    }
}

void KelMany::afterRename(KelObject& object) const noexcept {
    if (KelLinkCollection* several = collection(); several != nullptr) {
        several->afterRename(object);
    }
}

void KelMany::expectRename(KelObject& object, std::vector<KelLinkCollection*>& expecting) const {
    if (KelLinkCollection* several = collection(); several != nullptr) {
        expecting.push_back(several); // if expectRename throws, this one is told as well
        if (!several->expectRename(object)) {
            expecting.pop_back();
        }
    }
}
