#include "ledger/Claims.h"

namespace ledger {

void Claims::add(const Key& key, KelObject* object) {
    const auto number = static_cast<std::uint32_t>(items_.size());
    items_.push_back({object, 0});
    const auto [place, isNew] = chains_.try_emplace(key, Chain{number, number, number});
    if (!isNew) {
        Chain& chain = place.value();
        items_[chain.last].next = number;
        chain.first = chain.first == 0 ? number : chain.first;
        chain.last = number;
    }
}

void Claims::addCopy(const Key& key, KelObject* object) {
    add({key.owner, copies_.emplace_back(key.name), key.other}, object);
}

KelObject* Claims::take(const Key& key) {
    const auto found = chains_.find(key);
    if (found == chains_.end()) {
        return nullptr;
    }
    const Item& item = items_[found->second.first];
    found.value().first = item.next;
    return item.object;
}

KelObject* Claims::first(const Key& key) const {
    const auto found = chains_.find(key);
    return found != chains_.end() ? items_[found->second.head].object : nullptr;
}

} // namespace ledger
