#include "layout/NotationTree.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <sys/mman.h>

namespace layout {

const ObjectHead Node::noHead;

bool isViewKind(std::string_view kind) {
    return kind.ends_with("View") || kind.ends_with("Label") || kind.ends_with("ViewNew");
}

namespace {

constexpr std::size_t largePage = std::size_t{2} << 20U;
constexpr std::size_t fewestTexts = std::size_t{64} << 10U;
constexpr std::size_t mostReserved = std::size_t{1} << 30U;
constexpr std::size_t fewestPages = 2; // of memory that is taken so: most of a smaller piece would not be used

} // namespace

void* NotationTree::LargePages::do_allocate(std::size_t bytes, std::size_t alignment) {
    if (bytes < fewestPages * largePage) {
        return std::pmr::new_delete_resource()->allocate(bytes, alignment);
    }
    const std::size_t size = (bytes + largePage - 1) / largePage * largePage;
    void* memory = std::aligned_alloc(largePage, size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ::madvise(memory, size, MADV_HUGEPAGE); // else it has small pages
    return memory;
}

void NotationTree::LargePages::do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) {
    if (bytes < fewestPages * largePage) {
        std::pmr::new_delete_resource()->deallocate(memory, bytes, alignment);
    } else {
        std::free(memory);
    }
}

/// Both get room for the nodes and texts of usual models at once. The system gives memory only for what is used of it.
NotationTree::NotationTree(std::size_t fileSize)
    : nodes_(&memory_), texts_(std::max(fewestTexts, std::min(fileSize, mostReserved) / 2), &memory_) {
    nodes_.reserve(std::min(fileSize, mostReserved) / sizeof(Node));
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
