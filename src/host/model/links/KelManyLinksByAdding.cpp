#include "host/model/links/KelManyLinksByAdding.h"

#include <algorithm>

bool KelManyLinksByAdding::hasHoles() const noexcept {
    return slots_.size() - firstLive_ != static_cast<std::size_t>(count_);
}

void KelManyLinksByAdding::forgetIndexes() noexcept {
    positions_.clear();
    live_.clear();
    names_.clear();
}

void KelManyLinksByAdding::indexPositions() const {
    if (!positions_.empty()) {
        return;
    }
    try {
        positions_.reserve(static_cast<std::size_t>(count_));
        for (std::size_t slot = firstLive_; slot < slots_.size(); ++slot) {
            if (slots_[slot] != nullptr) {
                positions_.emplace(slots_[slot], slot);
            }
        }
    } catch (...) {
        positions_.clear();
        throw;
    }
}

void KelManyLinksByAdding::indexLiveSlots() const {
    if (live_.size() != 0) {
        return;
    }
    try {
        for (const KelObject* object : slots_) {
            live_.append(object != nullptr);
        }
    } catch (...) {
        live_.clear();
        throw;
    }
}

void KelManyLinksByAdding::indexNames() const {
    if (!names_.empty()) {
        return;
    }
    indexPositions(); // beforeRename, which must not allocate, searches them
    try {
        for (std::size_t slot = firstLive_; slot < slots_.size(); ++slot) {
            if (slots_[slot] != nullptr) {
                names_.insert(NamedSlot{slots_[slot], slot});
            }
        }
    } catch (...) {
        names_.clear();
        throw;
    }
}

std::size_t KelManyLinksByAdding::slotAt(int index) const {
    if (!hasHoles()) {
        return firstLive_ + static_cast<std::size_t>(index);
    }
    try {
        indexLiveSlots();
        return live_.select(index);
    } catch (...) { // no memory for the index: search linearly
        std::size_t slot = firstLive_;
        for (int left = index; left > 0 || slots_[slot] == nullptr; ++slot) {
            left -= static_cast<int>(slots_[slot] != nullptr);
        }
        return slot;
    }
}

int KelManyLinksByAdding::indexAt(std::size_t slot) const {
    if (!hasHoles()) {
        return static_cast<int>(slot - firstLive_);
    }
    indexLiveSlots();
    return live_.rank(slot);
}

std::size_t KelManyLinksByAdding::slotOf(const KelObject& object) const {
    // Objects are mostly removed from either end, which needs no index.
    if (count_ > 0 && slots_[firstLive_] == &object) {
        return firstLive_;
    }
    if (count_ > 0 && slots_.back() == &object) {
        return slots_.size() - 1;
    }
    try {
        indexPositions();
    } catch (...) { // no memory for the index: search linearly
        return static_cast<std::size_t>(std::find(slots_.begin(), slots_.end(), &object) - slots_.begin());
    }
    const auto place = positions_.find(&object);
    return place == positions_.end() ? slots_.size() : place->second;
}

void KelManyLinksByAdding::insert(KelObject& object) {
    const std::size_t slot = slots_.size();
    try {
        slots_.push_back(&object);
        if (!positions_.empty()) {
            positions_.emplace(&object, slot);
        }
        if (live_.size() != 0) {
            live_.append(true);
        }
        if (!names_.empty()) {
            names_.insert(NamedSlot{&object, slot});
        }
    } catch (...) {
        slots_.resize(slot);
        forgetIndexes();
        throw;
    }
    ++count_;
}

void KelManyLinksByAdding::erase(KelObject& object) noexcept {
    const std::size_t slot = slotOf(object);
    --count_;
    slots_[slot] = nullptr;
    if (count_ == 0) {
        slots_.clear();
        firstLive_ = 0;
        forgetIndexes();
        return;
    }
    if (!positions_.empty()) {
        positions_.erase(&object);
    }
    if (!names_.empty()) {
        names_.erase(NamedSlot{&object, slot});
    }
    if (live_.size() != 0) {
        live_.kill(slot);
    }
    while (slots_[firstLive_] == nullptr) {
        ++firstLive_;
    }
    while (slots_.back() == nullptr) {
        slots_.pop_back();
        if (live_.size() != 0) {
            live_.removeLast();
        }
    }
}

KelObject* KelManyLinksByAdding::at(int index) const {
    return index >= 0 && index < count_ ? slots_[slotAt(index)] : nullptr;
}

bool KelManyLinksByAdding::holds(const KelObject& object) const {
    return slotOf(object) < slots_.size();
}

int KelManyLinksByAdding::indexOf(const KelObject& object) const {
    const std::size_t slot = slotOf(object);
    return slot < slots_.size() ? indexAt(slot) : -1;
}

int KelManyLinksByAdding::indexOfName(const KelString& name, int from) const {
    if (from >= count_) {
        return -1;
    }
    indexNames();
    const std::size_t firstSlot = from <= 0 ? 0 : slotAt(from);
    const auto place = names_.lower_bound(NameKey{name.view(), firstSlot});
    return place != names_.end() && place->object->getName() == name ? indexAt(place->slot) : -1;
}

void KelManyLinksByAdding::beforeRename(KelObject& object) noexcept {
    if (!names_.empty()) {
        renaming_ = names_.extract(names_.find(NamedSlot{&object, slotOf(object)}));
    }
}

void KelManyLinksByAdding::afterRename(KelObject& /*object*/) noexcept {
    if (!renaming_.empty()) {
        names_.insert(std::move(renaming_));
    }
}

bool KelManyLinksByAdding::expectRename(KelObject& /*object*/) {
    names_.clear(); // to be made again when needed costs less than moving each object in it
    return false;
}
