#include "host/model/links/KelLinkCollection.h"

#include "host/model/links/KelFewLinks.h"
#include "host/model/links/KelManyLinksByAdding.h"
#include "host/model/links/KelManyLinksByName.h"

#include <algorithm>
#include <array>
#include <string_view>

std::unique_ptr<KelLinkCollection> KelLinkCollection::make(KelOrder order, int count) {
    if (count <= KelFewLinks::mostObjects) {
        return KelFewLinks::make(order, count);
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

std::unique_ptr<KelFewLinks> KelFewLinks::make(KelOrder order, int count) {
    // With its head, each fills a piece of memory as malloc has them.
    constexpr std::array rooms{3, 7, 15, mostObjects};
    const Room room{*std::ranges::lower_bound(rooms, count)};
    return std::unique_ptr<KelFewLinks>(new (room) KelFewLinks(order, room));
}

KelObject** KelFewLinks::begin() const noexcept {
    return reinterpret_cast<KelObject**>(const_cast<KelFewLinks*>(this + 1));
}

int KelFewLinks::placeOf(const KelObject& object) const {
    const std::string_view name = object.getName().view();
    if (order_ == KelOrder::byAdding || count_ == 0 || objects().back()->getName().view() <= name) {
        return count_;
    }
    const auto place =
        std::ranges::upper_bound(objects(), name, {}, [](const KelObject* held) { return held->getName().view(); });
    return static_cast<int>(place - objects().begin());
}

void KelFewLinks::put(int index, KelObject& object) noexcept {
    std::copy_backward(begin() + index, begin() + count_, begin() + count_ + 1);
    begin()[index] = &object;
    ++count_;
}

void KelFewLinks::take(const KelObject& object) noexcept {
    KelObject** place = begin() + indexOf(object);
    std::copy(place + 1, begin() + count_, place);
    --count_;
}

void KelFewLinks::insert(KelObject& object) {
    put(placeOf(object), object);
}

void KelFewLinks::erase(KelObject& object) noexcept {
    take(object);
}

KelObject* KelFewLinks::at(int index) const {
    return index >= 0 && index < count_ ? begin()[index] : nullptr;
}

bool KelFewLinks::holds(const KelObject& object) const {
    return indexOf(object) >= 0;
}

int KelFewLinks::indexOf(const KelObject& object) const {
    const auto place = std::ranges::find(objects(), &object);
    return place == objects().end() ? -1 : static_cast<int>(place - objects().begin());
}

int KelFewLinks::indexOfName(const KelString& name, int from) const {
    for (int index = std::max(from, 0); index < count_; ++index) {
        if (begin()[index]->getName() == name) {
            return index;
        }
    }
    return -1;
}

void KelFewLinks::beforeRename(KelObject& object) noexcept {
    if (order_ == KelOrder::byName) {
        take(object);
    }
}

void KelFewLinks::afterRename(KelObject& object) noexcept {
    if (order_ == KelOrder::byName) {
        put(placeOf(object), object); // there is room: beforeRename has removed the object
    }
}
