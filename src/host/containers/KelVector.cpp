// The containers that are arrays: KelVector and its iterator, KelOrderedVector, KelStringList.
#include "host/containers/KelVector.h"

#include "host/containers/KelOrderedVector.h"
#include "host/containers/KelStringList.h"
#include "host/containers/KelVectorIterator.h"
#include "host/text/KelString.h"

#include <algorithm>
#include <cstring>

KelVector& KelVector::operator=(const KelVector& other) {
    std::vector<const void*> copy(other.elements_);
    elements_.swap(copy);
    count_ = other.count_;
    return *this;
}

KelVector::~KelVector() = default;

KelVector::Iterator* KelVector::own(KelContainer::Iterator* iterator) const {
    const bool mine = iterator != nullptr && iterator->getContainer() == this;
    return mine ? static_cast<Iterator*>(iterator) : nullptr;
}

void KelVector::empty() {
    elements_.clear();
    count_ = 0;
}

KelContainer::Iterator* KelVector::newIterator(bool fromLast) const {
    return new Iterator(*this, fromLast);
}

void KelVector::deleteIterator(KelContainer::Iterator* iterator) const {
    delete iterator;
}

bool KelVector::add(const void* element, bool allowDuplicates, KelContainer::Iterator* iterator) {
    if (element == nullptr) {
        return false;
    }
    const int present = allowDuplicates ? -1 : findFirstElement(element);
    if (present < 0) {
        elements_.push_back(element);
        ++count_;
    }
    if (Iterator* position = own(iterator)) {
        position->moveTo(present < 0 ? count_ - 1 : present);
    }
    return present < 0;
}

bool KelVector::contains(const void* element, KelContainer::Iterator* iterator) const {
    const auto found = std::find(elements_.begin(), elements_.end(), element);
    if (found == elements_.end()) {
        return false;
    }
    if (Iterator* position = own(iterator)) {
        position->moveTo(static_cast<int>(found - elements_.begin()));
    }
    return true;
}

const void* KelVector::findFirst(const void* key, KelContainer::Iterator* iterator) const {
    const auto found = std::find_if(elements_.begin(), elements_.end(),
                                    [&](const void* element) { return compare2Key(element, key) == 0; });
    if (found == elements_.end()) {
        return nullptr;
    }
    if (Iterator* position = own(iterator)) {
        position->moveTo(static_cast<int>(found - elements_.begin()));
    }
    return *found;
}

bool KelVector::remove(KelContainer::Iterator* iterator) {
    Iterator* const position = own(iterator);
    if (position == nullptr || !removeElement(position->getIndex())) {
        return false;
    }
    position->moveTo(position->getIndex());
    return true;
}

bool KelVector::addElement(const void* element, bool allowDuplicates) {
    return add(element, allowDuplicates, nullptr);
}

bool KelVector::containsElement(const void* element) const {
    return contains(element, nullptr);
}

const void* KelVector::operator[](int index) const {
    return index >= 0 && index < count_ ? elements_[static_cast<std::size_t>(index)] : nullptr;
}

int KelVector::findFirstElement(const void* element) const {
    return findNextElement(element, -1);
}

int KelVector::findLastElement(const void* element) const {
    return findPreviousElement(element, count_);
}

int KelVector::findNextElement(const void* element, int index) const {
    for (int i = std::clamp(index, -1, count_) + 1; i < count_; ++i) {
        if (compare2Object((*this)[i], element) == 0) {
            return i;
        }
    }
    return -1;
}

int KelVector::findPreviousElement(const void* element, int index) const {
    for (int i = std::clamp(index, 0, count_) - 1; i >= 0; --i) {
        if (compare2Object((*this)[i], element) == 0) {
            return i;
        }
    }
    return -1;
}

bool KelVector::removeElement(int index) {
    if (index < 0 || index >= count_) {
        return false;
    }
    elements_.erase(elements_.begin() + index);
    --count_;
    return true;
}

bool KelVector::operator==(const KelVector& other) const {
    return elements_ == other.elements_;
}

bool KelVector::operator!=(const KelVector& other) const {
    return !(*this == other);
}

KelVector::Iterator::Iterator(const KelVector& vector, bool fromLast) : vector_(&vector) {
    if (fromLast) {
        moveToLast();
    } else {
        moveToFirst();
    }
}

KelVector::Iterator::~Iterator() = default;

const KelContainer* KelVector::Iterator::getContainer() const {
    return vector_;
}

const void* KelVector::Iterator::operator*() const {
    return get();
}

const void* KelVector::Iterator::get() const {
    return (*vector_)[index_];
}

bool KelVector::Iterator::moveToFirst() {
    return moveTo(0);
}

bool KelVector::Iterator::moveToLast() {
    return moveTo(vector_->getCount() - 1);
}

bool KelVector::Iterator::next(int steps) {
    const int index = getIndex();
    return moveTo(index >= 0 && steps < vector_->getCount() - index ? index + steps : -1);
}

bool KelVector::Iterator::previous(int steps) {
    const int index = getIndex();
    return moveTo(index >= 0 && steps <= index ? index - steps : -1);
}

bool KelVector::Iterator::findFirst(const void* key) {
    return findForward(key, 0);
}

bool KelVector::Iterator::findLast(const void* key) {
    return findBackward(key, vector_->getCount() - 1);
}

bool KelVector::Iterator::findNext(const void* key) {
    const int index = getIndex();
    return findForward(key, index >= 0 ? index + 1 : vector_->getCount());
}

bool KelVector::Iterator::findPrevious(const void* key) {
    return findBackward(key, getIndex() - 1);
}

bool KelVector::Iterator::findForward(const void* key, int from) {
    int index = from;
    while (index < vector_->getCount() && vector_->compare2Key((*vector_)[index], key) != 0) {
        ++index;
    }
    return moveTo(index);
}

bool KelVector::Iterator::findBackward(const void* key, int from) {
    int index = from;
    while (index >= 0 && vector_->compare2Key((*vector_)[index], key) != 0) {
        --index;
    }
    return moveTo(index);
}

bool KelVector::Iterator::moveTo(int index) {
    index_ = index >= 0 && index < vector_->getCount() ? index : -1;
    return index_ >= 0;
}

int KelVector::Iterator::getIndex() const {
    return index_ < vector_->getCount() ? index_ : -1;
}

bool KelVector::Iterator::operator==(const Iterator& other) const {
    return vector_ == other.vector_ && getIndex() == other.getIndex();
}

bool KelVector::Iterator::operator!=(const Iterator& other) const {
    return !(*this == other);
}

KelOrderedVector::~KelOrderedVector() = default;

bool KelOrderedVector::remove(KelContainer::Iterator* iterator) {
    return KelVector::remove(iterator);
}

bool KelOrderedVector::insertElement(const void* element, int index) {
    if (element == nullptr || index < 0 || index > count_) {
        return false;
    }
    elements_.insert(elements_.begin() + index, element);
    ++count_;
    return true;
}

KelStringList::~KelStringList() = default;

int KelStringList::compare2Object(const void* left, const void* right) const {
    return std::strcmp(static_cast<const KelString*>(left)->text(), static_cast<const KelString*>(right)->text());
}

int KelStringList::compare2Key(const void* element, const void* key) const {
    return compare2Object(element, key);
}
