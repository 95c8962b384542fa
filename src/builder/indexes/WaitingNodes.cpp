#include "builder/indexes/WaitingNodes.h"

#include "host/containers/KelLinkTree.h"
#include "host/model/KelModelElement.h"
#include "host/model/links/KelPointerHash.h"

#include <tsl/robin_map.h>

namespace rose::WaitingNodes {

namespace {

tsl::robin_map<const KelModelElement*, KelRBTree::Node*, KelPointerHash> nodes;

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

void remove(KelLinkTree& list, const KelModelElement& element) noexcept {
    const auto place = nodes.find(&element);
    if (place != nodes.end()) {
        list.removeNode(place->second);
        nodes.erase(place);
    }
}

void clear() noexcept {
    decltype(nodes)().swap(nodes); // clear() would keep the memory
}

} // namespace rose::WaitingNodes
