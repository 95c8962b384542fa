#include "diff/drawings.h"

#include "export/NameIds.h"
#include "layout/makeScene.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <tuple>

namespace diff {

namespace {

using layout::Node;
using layout::NodeId;
using layout::NodeKind;
using layout::noNode;
using layout::NotationTree;

/// The texts that are about how something is drawn; all other texts are the model's.
constexpr std::array<std::string_view, 3> drawnTexts{"face", "icon", "icon_style"};
/// The numbers and words that are not.
constexpr std::array<std::string_view, 4> modelWords{"abstract", "derived", "static", "documentation"};

std::string numberText(double number) {
    return std::abs(number) < 1e15 && number == std::floor(number) ? std::to_string(static_cast<std::int64_t>(number))
                                                                   : std::to_string(number);
}

/// A property of a view, with the kinds of the objects in the view that it is within.
struct Property {
    std::string name;
    std::string value;

    friend bool operator==(const Property& one, const Property& other) = default;
};

std::vector<Property> propertiesOf(const NotationTree& tree, NodeId view) {
    std::vector<Property> properties;
    for (NodeId id = view; (id = tree.following(id, view)) != noNode;) {
        const Node& node = tree[id];
        std::string value;
        if (node.kind == NodeKind::location) {
            value = "(" + numberText(node.x()) + ", " + numberText(node.y()) + ")";
        } else if (node.kind == NodeKind::number) {
            value = numberText(node.number());
        } else if (node.kind == NodeKind::word || std::ranges::count(drawnTexts, node.key.name()) > 0) {
            value = node.text();
        }
        if (value.empty() || std::ranges::count(modelWords, node.key.name()) > 0) {
            continue;
        }
        std::string name(node.key.name());
        for (NodeId up = node.parent; up != view && up != noNode; up = tree[up].parent) {
            if (tree[up].kind == NodeKind::object) {
                name.insert(0, std::string(tree[up].text()) + " ");
            }
        }
        properties.push_back({std::move(name), std::move(value)});
    }
    return properties;
}

/// The properties that the other view does not have in the same place of the list.
std::string differing(const std::vector<Property>& properties, const std::vector<Property>& others) {
    std::multimap<std::string_view, std::string_view> known;
    for (const Property& other : others) {
        known.emplace(other.name, other.value);
    }
    std::string text;
    for (const Property& property : properties) {
        const auto [first, last] = known.equal_range(property.name);
        const auto same = std::find_if(first, last, [&](const auto& one) { return one.second == property.value; });
        if (same != last) {
            known.erase(same);
            continue;
        }
        text += (text.empty() ? "" : ", ") + property.name + (property.name.empty() ? "" : " ") + property.value;
    }
    return text;
}

struct Diagram {
    NodeId id;
    std::string_view kind;
    std::string quid;
    LayoutChange::Side side;
};

std::vector<Diagram> diagramsOf(const Drawings& drawings) {
    std::vector<Diagram> diagrams;
    exporter::NameIds ids({kindWord(Kind::diagram)});
    for (const NodeId id : layout::diagramsOf(drawings.tree)) {
        const Node& node = drawings.tree[id];
        Diagram& diagram = diagrams.emplace_back();
        diagram.id = id;
        diagram.kind = node.text();
        diagram.quid = text::lowerCase(drawings.tree.text(id, "quid"));
        const std::vector<std::string> packages = layout::packagesOf(drawings.tree, id);
        for (const std::string& package : packages) {
            diagram.side.qualifiedName += package + "::";
            ids.enter(package);
        }
        diagram.side.qualifiedName += node.name();
        diagram.side.id = exporter::mayBeId(diagram.quid) ? exporter::idOfQuid(diagram.quid)
                                                          : exporter::idOfName(ids.take(0, node.name()));
        ids.leaveTo(0);
        const std::string& unit = drawings.tree.fileName(node.head().file);
        diagram.side.file = unit.empty() ? drawings.file : unit;
        diagram.side.line = node.head().line;
    }
    return diagrams;
}

/// Views of one kind, element and name are told apart by their order.
using ViewKey = std::tuple<std::string_view, std::string_view, std::string_view, std::size_t>;
using Views = std::map<ViewKey, NodeId>;

void addViews(const NotationTree& tree, NodeId list, Views& views) {
    std::map<ViewKey, std::size_t> counts;
    for (NodeId id = tree[list].first; id != noNode; id = tree[id].next) {
        if (tree[id].kind == NodeKind::object) {
            ViewKey key{tree[id].text(), tree.text(id, "quidu"), tree[id].name(), 0};
            std::get<3>(key) = counts[key]++;
            views.emplace(key, id);
        }
    }
}

Views viewsOf(const NotationTree& tree, NodeId diagram) {
    Views views;
    for (NodeId id = tree[diagram].first; id != noNode; id = tree[id].next) {
        if (tree[id].kind == NodeKind::list) {
            addViews(tree, id, views);
        }
    }
    return views;
}

class Comparer {
public:
    Comparer(const Drawings& olds, const Drawings& news) : old_(olds.tree), new_(news.tree) {}

    std::vector<LayoutChange> compare(const std::vector<Diagram>& olds, const std::vector<Diagram>& news) {
        std::map<std::string_view, const Diagram*> byQuid;
        std::map<std::pair<std::string_view, std::string_view>, const Diagram*> byName;
        std::vector<const Diagram*> taken;
        for (const Diagram& diagram : olds) {
            if (!diagram.quid.empty()) {
                byQuid.emplace(diagram.quid, &diagram);
            }
            byName.emplace(std::pair(diagram.kind, std::string_view(diagram.side.qualifiedName)), &diagram);
        }
        for (const Diagram& diagram : news) {
            const auto same = byQuid.find(diagram.quid);
            const auto named = byName.find({diagram.kind, diagram.side.qualifiedName});
            if (same != byQuid.end()) {
                compareViews(*same->second, diagram, Evidence::quid);
            } else if (named != byName.end()) {
                compareViews(*named->second, diagram, Evidence::name);
            }
        }
        return std::move(changes_);
    }

private:
    void compareViews(const Diagram& one, const Diagram& other, Evidence evidence) {
        const Views ones = viewsOf(old_, one.id);
        const Views others = viewsOf(new_, other.id);
        const auto add = [&](const ViewKey& key, std::string from, std::string to) {
            if (from == to) {
                return;
            }
            const auto& [kind, quid, name, number] = key;
            changes_.push_back({.view = std::string(kind) + (name.empty() ? "" : " ") + std::string(name),
                                .from = std::move(from),
                                .to = std::move(to),
                                .oldDiagram = one.side,
                                .newDiagram = other.side,
                                .evidence = evidence});
        };
        for (const auto& [key, view] : ones) {
            const auto found = others.find(key);
            const std::vector<Property> olds = propertiesOf(old_, view);
            const std::vector<Property> news =
                found != others.end() ? propertiesOf(new_, found->second) : std::vector<Property>();
            if (olds != news) {
                add(key, differing(olds, news), differing(news, olds));
            }
        }
        for (const auto& [key, view] : others) {
            const std::vector<Property> news = propertiesOf(new_, view);
            if (!ones.contains(key) && !news.empty()) {
                add(key, "", differing(news, {}));
            }
        }
    }

    const NotationTree& old_;
    const NotationTree& new_;
    std::vector<LayoutChange> changes_;
};

} // namespace

std::vector<LayoutChange> compareDrawings(const Drawings& olds, const Drawings& news) {
    return Comparer(olds, news).compare(diagramsOf(olds), diagramsOf(news));
}

} // namespace diff
