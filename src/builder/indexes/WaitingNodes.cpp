#include "builder/indexes/WaitingNodes.h"

#include "host/containers/KelNameLinkTree.h"
#include "host/model/KelModelElement.h"
#include "host/model/links/KelPointerHash.h"
#include "host/text/KelTextHash.h"

#include <tsl/robin_map.h>

namespace rose::WaitingNodes {

namespace {

using Node = KelRBTree::Node;

tsl::robin_map<const KelModelElement*, Node*, KelPointerHash> nodes;

// The first node of each name in the tree that is ordered by names, by the name's hash: descending a tree of a million
// names is one cache miss after the other.
tsl::robin_map<std::size_t, Node*> firstNodes;
bool namesShareHash = false; // if so, a name that is not here may be in the tree
bool hasNamesakes = false;   // if not, a node that goes is its name's only one

const KelString& nameOf(const Node* node) {
    return static_cast<const KelModelElement*>(KelRBTree::element(node))->getName();
}

void forgetFirst(const KelNameLinkTree& list, const Node* node) noexcept {
    const KelString& name = nameOf(node);
    const auto first = firstNodes.find(KelTextHash()(name.view()));
    if (first == firstNodes.end() || first->second != node) {
        return;
    }
    if (Node* next = hasNamesakes ? list.findNextNode(&name, node) : nullptr) {
        first.value() = next;
    } else {
        firstNodes.erase(first);
    }
}

} // namespace

void add(KelLinkTree& list, const KelModelElement& element) {
    const auto place = nodes.try_emplace(&element, nullptr).first;
    try {
        place.value() = list.addNode(&element);
    } catch (...) {
        nodes.erase(place);
        throw;
    }
}

void add(KelNameLinkTree& list, const KelModelElement& element) {
    add(static_cast<KelLinkTree&>(list), element);
    const std::size_t hash = KelTextHash()(element.getName().view());
    const auto [first, isNew] = firstNodes.try_emplace(hash, nodes.find(&element)->second);
    if (!isNew) {
        const bool isNamesake = nameOf(first->second) == element.getName();
        (isNamesake ? hasNamesakes : namesShareHash) = true;
    }
}

KelModelElement* findFirst(const KelNameLinkTree& list, const KelString& name) {
    const auto first = firstNodes.find(KelTextHash()(name.view()));
    const Node* node = first != firstNodes.end() ? first->second : nullptr;
    if (namesShareHash && (node == nullptr || !(nameOf(node) == name))) {
        node = list.findFirstNode(&name);
    }
    const bool isFound = node != nullptr && nameOf(node) == name;
    return isFound ? static_cast<KelModelElement*>(const_cast<void*>(KelRBTree::element(node))) : nullptr;
}

void remove(KelLinkTree& list, const KelModelElement& element) noexcept {
    const auto place = nodes.find(&element);
    if (place != nodes.end()) {
        list.removeNode(place->second);
        nodes.erase(place);
    }
}

void remove(KelNameLinkTree& list, const KelModelElement& element) noexcept {
    if (const auto place = nodes.find(&element); place != nodes.end()) {
        forgetFirst(list, place->second);
        remove(static_cast<KelLinkTree&>(list), element);
    }
}

void clear() noexcept {
    nodes.clear();
    firstNodes.clear();
    namesShareHash = false;
    hasNamesakes = false;
}

} // namespace rose::WaitingNodes
