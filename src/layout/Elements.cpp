#include "layout/Elements.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace layout {

namespace {

constexpr std::string_view separator = "::";
constexpr std::uint64_t hashStart = 14695981039346656037U;
constexpr std::uint64_t hashFactor = 1099511628211U;

std::uint64_t extended(std::uint64_t hash, std::string_view text) {
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * hashFactor;
    }
    return hash;
}

bool isSmall(char byte) {
    return byte >= 'a' && byte <= 'z';
}

/// The text in capitals, in `room` if it is not the text itself.
std::string_view upper(std::string_view text, std::span<char> room) {
    std::ranges::transform(text, room.begin(),
                           [](char byte) { return isSmall(byte) ? static_cast<char>(byte - 'a' + 'A') : byte; });
    return {room.data(), text.size()};
}

/// Whether it is part of the paths of what is in it.
bool isInPaths(const Node& node) {
    return node.kind == NodeKind::object && !node.name().empty() && node.text() != "Design";
}

} // namespace

Elements::Elements(const NotationTree& tree) : tree_(tree) {
    std::vector<NodeId> objects;
    objects.reserve(tree.quids().size());
    std::ranges::transform(tree.quids(), std::back_inserter(objects), [&](NodeId quid) { return tree[quid].parent; });
    objects = tree.sorted(std::move(objects));
    quids_.max_load_factor(0.8F);
    quids_.reserve(objects.size());
    for (const NodeId object : objects) {
        if (const std::string_view quid = tree.text(object, "quid"); !quid.empty()) {
            quids_.try_emplace(std::ranges::any_of(quid, isSmall) ? kept(quid) : quid, object);
        }
    }
}

std::string_view Elements::kept(std::string_view quid) {
    return upper(quid, {static_cast<char*>(capitals_.allocate(quid.size(), 1)), quid.size()});
}

NodeId Elements::withQuid(std::string_view quid) const {
    std::array<char, 64> room{};
    std::string longer;
    if (std::ranges::any_of(quid, isSmall)) {
        if (quid.size() > room.size()) {
            longer.resize(quid.size());
        }
        quid = upper(quid, longer.empty() ? std::span<char>(room) : std::span<char>(longer));
    }
    const auto found = quids_.find(quid);
    return found != quids_.end() ? found->second : noNode;
}

void Elements::makePaths() const {
    struct Level {
        NodeId next;        // of the nodes that are in something
        std::uint64_t hash; // of its path, or of that around it
        std::uint32_t path;
    };
    std::vector<Level> levels{{tree_[noNode].first, hashStart, noPath}};
    while (!levels.empty()) {
        const Level level = levels.back();
        if (level.next == noNode) {
            levels.pop_back();
            continue;
        }
        const Node& node = tree_[level.next];
        levels.back().next = node.next;
        if (node.kind == NodeKind::object && isViewKind(node.text())) {
            continue;
        }
        if (isInPaths(node)) {
            const std::uint64_t before = level.path != noPath ? extended(level.hash, separator) : hashStart;
            const std::uint64_t hash = extended(before, node.name());
            const auto number = static_cast<std::uint32_t>(paths_.all.size());
            paths_.all.push_back({level.next, level.path});
            paths_.hashes.emplace_back(hash, number);
            levels.push_back({node.first, hash, number});
        } else if (node.first != noNode) {
            levels.push_back({node.first, level.hash, level.path});
        }
    }
    std::ranges::sort(paths_.hashes);
}

NodeId Elements::named(std::string_view path) const {
    constexpr int mostTries = 8; // names that share a hash are no accident
    std::call_once(paths_.isMade, [this] { makePaths(); });
    auto found = std::ranges::lower_bound(paths_.hashes, std::pair(extended(hashStart, path), std::uint32_t{0}));
    for (int tries = 0; tries < mostTries && found != paths_.hashes.end(); ++tries, ++found) {
        if (isPath(found->second, path)) {
            return paths_.all[found->second].object;
        }
    }
    return noNode;
}

bool Elements::isPath(std::uint32_t number, std::string_view path) const {
    for (;;) {
        const auto& [object, around] = paths_.all[number];
        const std::string_view name = tree_[object].name();
        if (!path.ends_with(name)) {
            return false;
        }
        path.remove_suffix(name.size());
        if (around == noPath || path.empty()) {
            return around == noPath && path.empty();
        }
        if (!path.ends_with(separator)) {
            return false;
        }
        path.remove_suffix(separator.size());
        number = around;
    }
}

std::string_view lastName(std::string_view path) {
    const std::size_t brackets = path.find('<');
    const std::size_t found = path.rfind(separator, brackets);
    return found == std::string_view::npos ? path : path.substr(found + separator.size());
}

bool isNameless(std::string_view name) {
    return name.empty() || name.starts_with("$UNNAMED$");
}

namespace {

struct Visibility {
    std::string_view word;
    std::string_view sign;
};

constexpr std::array<Visibility, 4> visibilities{
    {{"Public", "+ "}, {"Protected", "# "}, {"Private", "- "}, {"Implementation", "~ "}}};

std::string_view signOf(std::string_view word, std::string_view otherwise) {
    const auto* found = std::ranges::find(visibilities, word, &Visibility::word);
    return found != visibilities.end() ? found->sign : otherwise;
}

/// Of a list of such objects.
template <class Take>
void forEach(const NotationTree& tree, NodeId element, Key list, std::string_view kind, Take take) {
    const NodeId found = tree.find(element, list);
    for (NodeId child = tree[found].first; found != noNode && child != noNode; child = tree[child].next) {
        if (tree[child].kind == NodeKind::object && tree[child].text() == kind) {
            take(child);
        }
    }
}

std::string typed(std::string_view name, std::string_view type) {
    std::string text(name);
    if (!type.empty()) {
        text.append(" : ").append(lastName(type));
    }
    return text;
}

std::string stereotypeOf(const NotationTree& tree, NodeId member, const MemberStyle& style) {
    const std::string_view stereotype = style.hasStereotypes ? tree.text(member, "stereotype") : std::string_view();
    return stereotype.empty() ? std::string() : "<<" + std::string(stereotype) + ">> ";
}

} // namespace

std::vector<Member> attributesOf(const NotationTree& tree, NodeId element, const MemberStyle& style) {
    std::vector<Member> members;
    forEach(tree, element, "class_attributes", "ClassAttribute", [&](NodeId attribute) {
        std::string text = stereotypeOf(tree, attribute, style);
        text += signOf(tree.text(attribute, "exportControl"), "- ");
        text += tree.isTrue(attribute, "derived") ? "/" : "";
        text += typed(tree[attribute].name(), tree.text(attribute, "type"));
        if (const std::string_view initial = tree.text(attribute, "initv"); !initial.empty()) {
            text.append(" = ").append(initial);
        }
        members.push_back({std::move(text), tree.isTrue(attribute, "static"), false});
    });
    return members;
}

std::vector<Member> operationsOf(const NotationTree& tree, NodeId element, const MemberStyle& style) {
    std::vector<Member> members;
    forEach(tree, element, "operations", "Operation", [&](NodeId operation) {
        std::string text = stereotypeOf(tree, operation, style);
        text += signOf(tree.text(operation, "opExportControl"), "+ ");
        text.append(tree[operation].name()).append("(");
        if (style.hasSignatures) {
            bool isFirst = true;
            forEach(tree, operation, "parameters", "Parameter", [&](NodeId parameter) {
                text += (isFirst ? "" : ", ") + typed(tree[parameter].name(), tree.text(parameter, "type"));
                isFirst = false;
            });
        }
        text += ")";
        if (style.hasSignatures) {
            text = typed(text, tree.text(operation, "result"));
        }
        members.push_back({std::move(text), tree.isTrue(operation, "static"), tree.isTrue(operation, "abstract")});
    });
    return members;
}

std::vector<std::string> templateParametersOf(const NotationTree& tree, NodeId element) {
    std::vector<std::string> parameters;
    forEach(tree, element, "parameters", "Parameter", [&](NodeId parameter) {
        parameters.push_back(typed(tree[parameter].name(), tree.text(parameter, "type")));
    });
    return parameters;
}

} // namespace layout
