#include "builder/indexes/WaitingClasses.h"

#include "host/model/KelClass.h"
#include "host/text/KelTextHash.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace rose {

namespace {

std::size_t hashOf(const KelString& name) {
    return KelTextHash()(name.view());
}

bool comesBefore(const KelClass* left, const KelClass* right) {
    return left->getName().view() < right->getName().view();
}

} // namespace

void WaitingClasses::add(KelClass& waiting) {
    const auto slot = static_cast<Slot>(classes_.size());
    classes_.push_back(&waiting);
    try {
        next_.push_back(none);
        slotOf_.emplace(&waiting, slot);
        const auto [chain, isNew] = chains_.try_emplace(hashOf(waiting.getName()), Chain{slot, slot});
        if (!isNew) {
            next_[std::exchange(chain.value().last, slot)] = slot;
        }
    } catch (...) {
        slotOf_.erase(&waiting);
        classes_.pop_back();
        next_.resize(classes_.size());
        throw;
    }
}

KelClass* WaitingClasses::findFirst(const KelString& name) {
    const auto chain = chains_.find(hashOf(name));
    if (chain == chains_.end()) {
        return nullptr;
    }
    Slot& first = chain.value().first;
    while (first != none && classes_[first] == nullptr) {
        first = next_[first]; // it has left, and is not passed again
    }
    if (first == none) {
        chains_.erase(chain);
        return nullptr;
    }
    for (Slot slot = first; slot != none; slot = next_[slot]) { // only names that share a hash take a second step
        if (KelClass* held = classes_[slot]; held != nullptr && held->getName() == name) {
            return held;
        }
    }
    return nullptr;
}

void WaitingClasses::remove(const KelClass& waiting) noexcept {
    const auto place = slotOf_.find(&waiting);
    if (place == slotOf_.end()) {
        return;
    }
    classes_[place->second] = nullptr;
    slotOf_.erase(place);
    if (slotOf_.empty()) {
        *this = WaitingClasses(); // clear() would go through all that the tables have ever had
    }
}

std::vector<KelClass*> WaitingClasses::byName() const {
    std::vector<KelClass*> classes;
    classes.reserve(slotOf_.size());
    std::ranges::copy_if(classes_, std::back_inserter(classes), [](const KelClass* held) { return held != nullptr; });
    std::ranges::stable_sort(classes, comesBefore);
    return classes;
}

std::vector<KelClass*> WaitingClasses::takeByName() noexcept {
    std::vector<KelClass*> classes = std::move(classes_);
    *this = WaitingClasses();
    std::erase(classes, nullptr);
    std::ranges::stable_sort(classes, comesBefore);
    return classes;
}

} // namespace rose
