#include "host/model/links/KelLinkCollection.h"

#include "host/model/links/KelFewLinks.h"
#include "host/model/links/KelManyLinksByAdding.h"
#include "host/model/links/KelManyLinksByName.h"

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

// An object stands in a collection once at most, so the first place is the last, too.
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
