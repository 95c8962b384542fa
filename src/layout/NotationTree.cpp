#include "layout/NotationTree.h"

#include <algorithm>
#include <new>
#include <type_traits>

namespace layout {

const ObjectHead Node::noHead;

bool isViewKind(std::string_view kind) {
    return kind.ends_with("View") || kind.ends_with("Label") || kind.ends_with("ViewNew");
}

void NotationTree::Nodes::grow() {
    constexpr std::size_t fewest = 1024;
    const std::size_t capacity = std::max(fewest, capacity_ * 2);
    static_assert(std::is_trivially_copyable_v<Node>);
    auto* const larger = static_cast<Node*>(std::realloc(nodes_.get(), capacity * sizeof(Node)));
    if (larger == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(nodes_.release());
    nodes_.reset(larger);
    capacity_ = capacity;
}

NotationTree::~NotationTree() = default;

NodeId NotationTree::find(NodeId object, Key key) const {
    for (NodeId child = nodes_[object].first; child != noNode; child = nodes_[child].next) {
        if (nodes_[child].key == key) {
            return child;
        }
    }
    return noNode;
}

std::string_view NotationTree::text(NodeId object, Key key) const {
    NodeId found = find(object, key);
    if (found != noNode && nodes_[found].kind == NodeKind::value) {
        found = nodes_[found].first;
    }
    const NodeKind kind = nodes_[found].kind;
    return found != noNode && (kind == NodeKind::text || kind == NodeKind::word || kind == NodeKind::number)
               ? nodes_[found].text()
               : std::string_view();
}

double NotationTree::number(NodeId object, Key key, double otherwise) const {
    const Node& found = nodes_[find(object, key)];
    return found.kind == NodeKind::number ? found.number() : otherwise;
}

std::int64_t NotationTree::reference(NodeId object, Key key) const {
    const Node& found = nodes_[find(object, key)];
    return found.kind == NodeKind::reference ? found.reference() : -1;
}

NodeId NotationTree::following(NodeId id, NodeId top, bool skips) const {
    if (!skips && nodes_[id].first != noNode) {
        return nodes_[id].first;
    }
    while (id != top && nodes_[id].next == noNode) {
        id = nodes_[id].parent;
    }
    return id == top ? noNode : nodes_[id].next;
}

std::vector<NodeId> NotationTree::sorted(std::vector<NodeId> nodes) const {
    if (isInOrder_) {
        std::ranges::sort(nodes);
        return nodes;
    }
    std::vector<bool> isSought(size());
    for (const NodeId node : nodes) {
        isSought[node] = true;
    }
    nodes.clear();
    for (NodeId id = noNode; (id = following(id, noNode)) != noNode;) {
        if (isSought[id]) {
            nodes.push_back(id);
        }
    }
    return nodes;
}

} // namespace layout
