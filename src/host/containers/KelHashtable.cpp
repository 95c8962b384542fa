#include "host/containers/KelHashtable.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

// The bases must be named to avoid a warning; their only member is the count, which the assignment sets.
// NOLINTNEXTLINE(bugprone-copy-constructor-init,readability-redundant-member-init)
KelHashtable::KelHashtable(const KelHashtable& other) : _KelContainer(), KelContainer() {
    *this = other;
}

KelHashtable& KelHashtable::operator=(const KelHashtable& other) {
    if (this == &other) {
        return *this;
    }
    KelHashtable copy;
    for (const void* element : other.elements_) {
        copy.append(element, other.hashObject(element));
    }
    // The list object is kept, because iterators at no element refer to its end.
    elements_.clear();
    elements_.splice(elements_.begin(), copy.elements_);
    placesByHash_.swap(copy.placesByHash_);
    count_ = copy.count_;
    return *this;
}

KelHashtable::~KelHashtable() = default;

template <typename Matches>
KelHashtable::Place KelHashtable::findPlace(std::size_t hash, Matches matches) const {
    const auto places = placesByHash_.find(hash);
    if (places == placesByHash_.end()) {
        return elements_.end();
    }
    const auto found =
        std::find_if(places->second.begin(), places->second.end(), [&](const Place& place) { return matches(*place); });
    return found != places->second.end() ? *found : elements_.end();
}

KelHashtable::Iterator* KelHashtable::own(KelContainer::Iterator* iterator) const {
    const bool mine = iterator != nullptr && iterator->getContainer() == this;
    return mine ? static_cast<Iterator*>(iterator) : nullptr;
}

void KelHashtable::append(const void* element, std::size_t hash) {
    Elements added{element};
    placesByHash_[hash].push_back(added.cbegin());
    elements_.splice(elements_.end(), added);
    ++count_;
}

void KelHashtable::empty() {
    placesByHash_.clear();
    elements_.clear();
    count_ = 0;
}

KelContainer::Iterator* KelHashtable::newIterator(bool fromLast) const {
    return new Iterator(*this, fromLast);
}

void KelHashtable::deleteIterator(KelContainer::Iterator* iterator) const {
    delete iterator;
}

bool KelHashtable::add(const void* element, bool allowDuplicates, KelContainer::Iterator* iterator) {
    if (element == nullptr) {
        return false;
    }
    const std::size_t hash = hashObject(element);
    const auto present = allowDuplicates
                             ? elements_.end()
                             : findPlace(hash, [&](const void* held) { return compare2Object(held, element) == 0; });
    const bool added = present == elements_.end();
    if (added) {
        append(element, hash);
    }
    if (auto* position = own(iterator)) {
        position->place_ = added ? std::prev(elements_.end()) : present;
    }
    return added;
}

bool KelHashtable::contains(const void* element, KelContainer::Iterator* iterator) const {
    if (element == nullptr) {
        return false;
    }
    const auto place = findPlace(hashObject(element), [&](const void* held) { return held == element; });
    if (auto* position = own(iterator); position != nullptr && place != elements_.end()) {
        position->place_ = place;
    }
    return place != elements_.end();
}

const void* KelHashtable::findFirst(const void* key, KelContainer::Iterator* iterator) const {
    const auto place = findPlace(hashKey(key), [&](const void* held) { return compare2Key(held, key) == 0; });
    if (place == elements_.end()) {
        return nullptr;
    }
    if (auto* position = own(iterator)) {
        position->place_ = place;
    }
    return *place;
}

bool KelHashtable::remove(KelContainer::Iterator* iterator) {
    Iterator* const position = own(iterator);
    if (position == nullptr || position->place_ == elements_.end()) {
        return false;
    }
    const auto places = placesByHash_.find(hashObject(*position->place_));
    std::erase(places->second, position->place_);
    if (places->second.empty()) {
        placesByHash_.erase(places);
    }
    position->place_ = elements_.erase(position->place_);
    --count_;
    return true;
}

std::size_t KelHashtable::hashObject(const void* element) const {
    return std::hash<const void*>{}(element);
}

std::size_t KelHashtable::hashKey(const void* key) const {
    return std::hash<const void*>{}(key);
}

KelHashtable::Iterator::Iterator(const KelHashtable& table, bool fromLast)
    : table_(&table), place_(table.elements_.begin()) {
    if (fromLast) {
        moveToLast();
    }
}

KelHashtable::Iterator::~Iterator() = default;

const KelContainer* KelHashtable::Iterator::getContainer() const {
    return table_;
}

const void* KelHashtable::Iterator::operator*() const {
    return get();
}

const void* KelHashtable::Iterator::get() const {
    return place_ != table_->elements_.end() ? *place_ : nullptr;
}

bool KelHashtable::Iterator::moveToFirst() {
    place_ = table_->elements_.begin();
    return get() != nullptr;
}

bool KelHashtable::Iterator::moveToLast() {
    place_ = table_->elements_.end();
    if (!table_->elements_.empty()) {
        --place_;
    }
    return get() != nullptr;
}

bool KelHashtable::Iterator::next(int steps) {
    for (int i = 0; i < steps && place_ != table_->elements_.end(); ++i) {
        ++place_;
    }
    return get() != nullptr;
}

bool KelHashtable::Iterator::previous(int steps) {
    for (int i = 0; i < steps && place_ != table_->elements_.end(); ++i) {
        place_ = place_ != table_->elements_.begin() ? std::prev(place_) : table_->elements_.end();
    }
    return get() != nullptr;
}

bool KelHashtable::Iterator::findFirst(const void* key) {
    place_ = table_->elements_.end();
    table_->findFirst(key, this);
    return get() != nullptr;
}

bool KelHashtable::Iterator::findLast(const void* key) {
    return moveToLast() && (table_->compare2Key(get(), key) == 0 || findPrevious(key));
}

bool KelHashtable::Iterator::findNext(const void* key) {
    while (next(1) && table_->compare2Key(get(), key) != 0) {
    }
    return get() != nullptr;
}

bool KelHashtable::Iterator::findPrevious(const void* key) {
    while (previous(1) && table_->compare2Key(get(), key) != 0) {
    }
    return get() != nullptr;
}

bool KelHashtable::Iterator::moveTo(const void* element) {
    place_ = table_->elements_.end();
    return table_->contains(element, this);
}

bool KelHashtable::Iterator::operator==(const Iterator& other) const {
    return table_ == other.table_ && place_ == other.place_;
}

bool KelHashtable::Iterator::operator!=(const Iterator& other) const {
    return !(*this == other);
}
