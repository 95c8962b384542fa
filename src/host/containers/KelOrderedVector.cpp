#include "host/containers/KelOrderedVector.h"

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
