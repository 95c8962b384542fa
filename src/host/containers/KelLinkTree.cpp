#include "host/containers/KelLinkTree.h"

#include "host/containers/KelNameLinkTree.h"
#include "host/model/KelObject.h"

#include <algorithm>

KelLinkTree::~KelLinkTree() = default;

bool KelLinkTree::addElement(const void* element, bool allowDuplicates) {
    return add(element, allowDuplicates, nullptr);
}

bool KelLinkTree::containsElement(const void* element) const {
    return contains(element, nullptr);
}

const void* KelLinkTree::operator[](int index) const {
    const Node* node = getNode(index);
    return node != nullptr ? KelRBTree::element(node) : nullptr;
}

int KelLinkTree::findFirstElement(const void* element) const {
    const Node* node = findFirstEqualNode(element);
    return node != nullptr ? getIndex(node) : -1;
}

int KelLinkTree::findLastElement(const void* element) const {
    const Node* node = findLastEqualNode(element);
    return node != nullptr ? getIndex(node) : -1;
}

int KelLinkTree::findNextElement(const void* element, int index) const {
    const int last = findLastElement(element);
    return last > index ? std::max(findFirstElement(element), index + 1) : -1;
}

int KelLinkTree::findPreviousElement(const void* element, int index) const {
    const int first = findFirstElement(element);
    return first >= 0 && first < index ? std::min(findLastElement(element), index - 1) : -1;
}

bool KelLinkTree::removeElement(int index) {
    Node* node = getNode(index);
    if (node == nullptr) {
        return false;
    }
    removeNode(node);
    return true;
}

KelNameLinkTree::~KelNameLinkTree() = default;

int KelNameLinkTree::compare2Object(const void* left, const void* right) const {
    return compare2Key(left, &static_cast<const KelObject*>(right)->getName());
}

int KelNameLinkTree::compare2Key(const void* element, const void* key) const {
    return static_cast<const KelObject*>(element)->getName().view().compare(static_cast<const KelString*>(key)->view());
}
