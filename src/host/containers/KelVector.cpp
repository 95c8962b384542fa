#include "host/containers/KelVector.h"

#include "host/containers/KelVectorIterator.h"

#include <algorithm>

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
