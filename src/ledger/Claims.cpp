#include "ledger/Claims.h"

namespace ledger {

void Claims::add(const void* owner, std::string_view name, KelObject* object) {
    const auto number = static_cast<std::uint32_t>(items_.size());
    items_.push_back({object, 0});
    const auto [place, isNew] = chains_.try_emplace(Key{owner, std::string(name)}, Chain{number, number, number});
    if (!isNew) {
        Chain& chain = place.value();
        items_[chain.last].next = number;
        chain.first = chain.first == 0 ? number : chain.first;
        chain.last = number;
    }
}

KelObject* Claims::take(const void* owner, std::string_view name) {
    const auto found = chains_.find(Key{owner, std::string(name)});
    if (found == chains_.end()) {
        return nullptr;
    }
    const Item& item = items_[found->second.first];
    found.value().first = item.next;
    return item.object;
}

KelObject* Claims::first(const void* owner, std::string_view name) const {
    const auto found = chains_.find(Key{owner, std::string(name)});
    return found != chains_.end() ? items_[found->second.head].object : nullptr;
}

} // namespace ledger
