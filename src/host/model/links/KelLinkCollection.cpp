#include "host/model/links/KelLinkCollection.h"

#include "host/model/links/KelFewLinks.h"
#include "host/model/links/KelManyLinksByAdding.h"
#include "host/model/links/KelManyLinksByName.h"

#include <algorithm>

std::unique_ptr<KelLinkCollection> KelLinkCollection::make(KelOrder order, int count) {
    if (count <= KelFewLinks::mostObjects) {
        return std::make_unique<KelFewLinks>(order);
    }
    if (order == KelOrder::byName) {
        return std::make_unique<KelManyLinksByName>();
    }
    return std::make_unique<KelManyLinksByAdding>();
}

bool KelLinkCollection::addElement(const void* /*element*/, bool /*allowDuplicates*/) {
    return false;
}

bool KelLinkCollection::removeElement(int /*index*/) {
    return false;
}

bool KelLinkCollection::containsElement(const void* element) const {
    return element != nullptr && holds(*static_cast<const KelObject*>(element));
}

const void* KelLinkCollection::operator[](int index) const {
    return at(index);
}

// A collection contains an object at most once, so the first position is also the last.
int KelLinkCollection::findFirstElement(const void* element) const {
    return element != nullptr ? indexOf(*static_cast<const KelObject*>(element)) : -1;
}

int KelLinkCollection::findLastElement(const void* element) const {
    return findFirstElement(element);
}

int KelLinkCollection::findNextElement(const void* element, int index) const {
    const int found = findFirstElement(element);
    return found > index ? found : -1;
}

int KelLinkCollection::findPreviousElement(const void* element, int index) const {
    const int found = findFirstElement(element);
    return found < index ? found : -1;
}

std::vector<KelObject*>::iterator KelFewLinks::placeOf(const KelObject& object) {
    if (order_ == KelOrder::byAdding) {
        return objects_.end();
    }
    return std::upper_bound(objects_.begin(), objects_.end(), object.getName().view(),
                            [](std::string_view name, const KelObject* held) { return name < held->getName().view(); });
}

void KelFewLinks::insert(KelObject& object) {
    objects_.insert(placeOf(object), &object);
    ++count_;
}

void KelFewLinks::erase(KelObject& object) noexcept {
    objects_.erase(std::find(objects_.begin(), objects_.end(), &object));
    --count_;
}

KelObject* KelFewLinks::at(int index) const {
    return index >= 0 && index < count_ ? objects_[static_cast<std::size_t>(index)] : nullptr;
}

bool KelFewLinks::holds(const KelObject& object) const {
    return indexOf(object) >= 0;
}

int KelFewLinks::indexOf(const KelObject& object) const {
    const auto place = std::find(objects_.begin(), objects_.end(), &object);
    return place == objects_.end() ? -1 : static_cast<int>(place - objects_.begin());
}

int KelFewLinks::indexOfName(const KelString& name, int from) const {
    for (int index = std::max(from, 0); index < count_; ++index) {
        if (objects_[static_cast<std::size_t>(index)]->getName() == name) {
            return index;
        }
    }
    return -1;
}

void KelFewLinks::beforeRename(KelObject& object) noexcept {
    if (order_ == KelOrder::byName) {
        objects_.erase(std::find(objects_.begin(), objects_.end(), &object));
    }
}

void KelFewLinks::afterRename(KelObject& object) noexcept {
    if (order_ == KelOrder::byName) {
        objects_.insert(placeOf(object), &object); // needs no memory: beforeRename has removed the object
    }
}
