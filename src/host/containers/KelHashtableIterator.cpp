#include "host/containers/KelHashtable.h"

#include <iterator>

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
