#include "diff/ChangeTree.h"

#include <algorithm>
#include <cstdint>
#include <tuple>

namespace diff {

namespace {

/// A node of the tree: a new element, or an old one without a new one behind all new ones.
using Node = std::uint32_t;

class TreeMaker {
public:
    TreeMaker(const Difference& difference, std::span<const Change> changes) : difference_(difference) {
        const std::size_t count = newCount() + difference.oldModel().elements().size();
        std::vector<bool> isIn(count);
        for (const Change& change : changes) {
            if (change.subject == Subject::layout) {
                continue;
            }
            const Node node = change.newId != noElement ? change.newId : newCount() + change.oldId;
            owned_.push_back({node, change});
            for (Node up = node; up != noNode && !isIn[up]; up = ownerOf(up)) {
                isIn[up] = true;
                links_.push_back({ownerOf(up), isType(up), up < newCount(), up});
            }
        }
        std::ranges::sort(links_, [](const Link& one, const Link& other) {
            return std::tuple(one.owner, one.isType, one.isNew, one.node) <
                   std::tuple(other.owner, other.isType, other.isNew, other.node);
        });
        std::ranges::stable_sort(owned_, {}, &Owned::node);
    }

    /// Calls `take` with each node, its depth and its changes.
    template <class Take>
    void walk(Take take) const {
        std::vector<std::pair<Node, std::size_t>> open;
        const auto push = [&](Node owner, std::size_t depth) {
            const auto first = std::ranges::lower_bound(links_, owner, {}, &Link::owner);
            for (auto link = std::ranges::upper_bound(links_, owner, {}, &Link::owner); link != first;) {
                open.emplace_back((--link)->node, depth);
            }
        };
        push(noNode, 0);
        while (!open.empty()) {
            const auto [node, depth] = open.back();
            open.pop_back();
            take(node, depth,
                 std::span(std::ranges::lower_bound(owned_, node, {}, &Owned::node),
                           std::ranges::upper_bound(owned_, node, {}, &Owned::node)));
            push(node, depth + 1);
        }
    }

    [[nodiscard]] ElementId oldOf(Node node) const {
        return node < newCount() ? difference_.matching().oldOf[node] : node - newCount();
    }
    [[nodiscard]] ElementId newOf(Node node) const { return node < newCount() ? node : noElement; }

private:
    static constexpr Node noNode = noElement;

    struct Link {
        Node owner;
        bool isType; // they follow from what uses them, and come last
        bool isNew;
        Node node;
    };
    struct Owned {
        Node node;
        Change change;
    };

    [[nodiscard]] Node newCount() const { return static_cast<Node>(difference_.newModel().elements().size()); }
    [[nodiscard]] bool isType(Node node) const {
        return (node < newCount() ? difference_.newModel()[node] : difference_.oldModel()[node - newCount()]).kind ==
               Kind::type;
    }
    [[nodiscard]] Node ownerOf(Node node) const {
        if (node < newCount()) {
            return difference_.newModel()[node].owner;
        }
        const ElementId owner = difference_.oldModel()[node - newCount()].owner;
        const ElementId pair = difference_.matching().newOf[owner];
        return pair != noElement ? pair : newCount() + owner;
    }

    const Difference& difference_;
    std::vector<Link> links_;
    std::vector<Owned> owned_;
};

} // namespace

std::vector<TreeNode> changeTree(const Difference& difference, std::span<const Change> changes,
                                 std::vector<Change>& sorted) {
    const TreeMaker maker(difference, changes);
    sorted.clear();
    sorted.reserve(changes.size());
    std::vector<TreeNode> nodes;
    maker.walk([&](std::uint32_t node, std::size_t depth, const auto& owned) {
        const std::size_t first = sorted.size();
        for (const auto& [of, change] : owned) {
            sorted.push_back(change);
        }
        nodes.push_back({maker.oldOf(node), maker.newOf(node), depth, std::span(sorted).subspan(first)});
    });
    return nodes;
}

std::vector<Change> inTreeOrder(const Difference& difference, std::span<const Change> changes) {
    std::vector<Change> sorted;
    static_cast<void>(changeTree(difference, changes, sorted));
    return sorted;
}

} // namespace diff
