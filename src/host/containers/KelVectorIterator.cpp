#include "host/containers/KelVectorIterator.h"

#include <algorithm>

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
