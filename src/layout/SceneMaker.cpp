#include "layout/SceneMaker.h"

#include <algorithm>
#include <cmath>

namespace layout {

namespace {

constexpr double unitsPerPixel = 300.0 / 96; // fonts were laid out in whole pixels
constexpr double pixelsPerPoint = 96.0 / 72;
constexpr double usualSize = 10; // points
constexpr double largestSize = 1000;
constexpr double margin = 30;
constexpr std::string_view itemList = "diagram_item_list";

Colour toColour(double number) {
    const auto value = static_cast<std::uint32_t>(std::clamp(number, 0.0, 16777215.0));
    return static_cast<Colour>((value & 0xFF) << 16 | (value & 0xFF00) | value >> 16);
}

void include(Rectangle& bounds, bool& isEmpty, const Rectangle& other) {
    if (isEmpty) {
        bounds = other;
        isEmpty = false;
        return;
    }
    const double right = std::max(bounds.right(), other.right());
    const double bottom = std::max(bounds.bottom(), other.bottom());
    bounds.x = std::min(bounds.x, other.x);
    bounds.y = std::min(bounds.y, other.y);
    bounds.width = right - bounds.x;
    bounds.height = bottom - bounds.y;
}

NodeId itemsOf(const NotationTree& tree, NodeId diagram) {
    const NodeId items = tree.find(diagram, "items");
    return tree[items].kind == NodeKind::list && tree[items].text() == itemList ? items : noNode;
}

/// The object in the list, or in what is in it, that follows `id`; objects in objects are left out.
NodeId nextItem(const NotationTree& tree, NodeId id, NodeId list) {
    do {
        id = tree.following(id, list, id != list && tree[id].kind == NodeKind::object);
    } while (id != noNode && tree[id].kind != NodeKind::object);
    return id;
}

} // namespace

Font fitting(Font font, std::string_view text, double width) {
    const double wanted = textWidth(text, font.size, font.isBold) * faceSpare;
    if (wanted > width && width > 0) {
        font.size *= std::max(smallestScale, width / wanted);
    }
    return font;
}

double lineHeight(double size) {
    return size + 3 * unitsPerPixel;
}

std::vector<NodeId> diagramsOf(const NotationTree& tree) {
    std::vector<NodeId> diagrams;
    for (const NodeId list : tree.itemLists()) {
        const NodeId owner = tree[list].parent;
        if (tree[owner].kind == NodeKind::object && itemsOf(tree, owner) == list) {
            diagrams.push_back(owner);
        }
    }
    return tree.sorted(std::move(diagrams));
}

std::size_t itemCount(const NotationTree& tree, NodeId diagram) {
    std::size_t count = 0;
    for (NodeId id = tree[itemsOf(tree, diagram)].first; id != noNode; id = tree[id].next) {
        count += tree[id].kind == NodeKind::object ? 1 : 0;
    }
    return count;
}

std::vector<std::string> packagesOf(const NotationTree& tree, NodeId object) {
    std::vector<std::string> names;
    for (NodeId id = tree[object].parent; id != noNode; id = tree[id].parent) {
        const Node& node = tree[id];
        if (node.kind == NodeKind::object && !node.name().empty() &&
            (node.text() == "Class_Category" || node.text() == "SubSystem")) {
            names.emplace_back(node.name());
        }
    }
    std::ranges::reverse(names);
    return names;
}

Scene makeScene(const NotationTree& tree, const Elements& elements, NodeId diagram) {
    return SceneMaker(tree, elements, diagram).make();
}

Scene SceneMaker::make() {
    const Node& node = tree_[diagram_];
    scene_.kind = node.text();
    scene_.name = node.name();
    scene_.packages = packagesOf(tree_, diagram_);
    scene_.quid = tree_.text(diagram_, "quid");
    scene_.line = node.head().line;
    scene_.file = tree_.fileName(node.head().file);
    collect();
    for (std::size_t index = 0; index < scene_.items.size(); ++index) {
        takeElement(index);
        if (scene_.items[index].hasBox) {
            makeBox(index);
        }
    }
    placeUnplaced();
    setTitles();
    for (std::size_t index = 0; index < scene_.items.size(); ++index) {
        if (scene_.items[index].shape == Shape::line) {
            makeLine(index);
        }
    }
    stretchSwimlanes();
    measure();
    return std::move(scene_);
}

void SceneMaker::collect() {
    struct Found {
        NodeId view;
        int parent;
    };
    std::vector<Found> found;
    const NodeId list = itemsOf(tree_, diagram_);
    for (NodeId view = list; list != noNode && (view = nextItem(tree_, view, list)) != noNode;) {
        const auto parent = static_cast<int>(found.size());
        found.push_back({view, noItem});
        for (NodeId part = view; (part = tree_.following(part, view)) != noNode;) {
            if (tree_[part].kind == NodeKind::object && tree_[part].text() == "RoleView") {
                found.push_back({part, parent});
            }
        }
    }
    scene_.items.reserve(found.size()); // items are large
    reach_.resize(found.size());
    for (const Found& one : found) {
        add(one.view, one.parent);
    }
    std::ranges::stable_sort(byReference_, {}, &Referred::reference);
}

void SceneMaker::add(NodeId view, int parent) {
    const Node& node = tree_[view];
    Item& item = scene_.items.emplace_back();
    item.kind = node.text();
    item.quid = tree_.text(view, "quidu");
    item.line = node.head().line;
    item.file = tree_.fileName(node.head().file);
    item.parent = parent;
    if (node.reference() >= 0) {
        item.reference = std::to_string(node.reference());
        byReference_.push_back({node.reference(), static_cast<int>(views_.size())});
    }
    const ViewKind* kind = findViewKind(item.kind);
    kinds_.push_back(kind);
    const bool hasEnds = tree_.find(view, "client") != noNode && tree_.find(view, "supplier") != noNode;
    item.isUnknown = kind == nullptr;
    item.shape = kind != nullptr ? kind->shape : hasEnds ? Shape::line : Shape::rectangle;
    item.hasBox = item.shape != Shape::line;
    item.isDashed = kind != nullptr && kind->isDashed;
    if (const NodeId colour = tree_.find(view, "line_color"); colour != noNode) {
        item.lineColour = toColour(tree_[colour].number());
    }
    if (const NodeId colour = tree_.find(view, "fill_color"); colour != noNode) {
        item.fillColour = toColour(tree_[colour].number());
    } else if (item.hasBox && item.shape != Shape::none && item.shape != Shape::swimlane) {
        item.fillColour = white;
    }
    views_.push_back(view);
    isPlaced_.push_back(location(view, "location").has_value());
}

void SceneMaker::takeElement(std::size_t index) {
    Item& item = scene_.items[index];
    const ViewKind* kind = kinds_[index];
    NodeId shown = noNode;
    if (!item.quid.empty()) {
        shown = elements_.withQuid(item.quid);
        item.isMissing = shown == noNode;
    } else if (kind != nullptr && kind->hasElement && !isNameless(tree_[views_[index]].name())) {
        shown = elements_.named(tree_[views_[index]].name());
    }
    shown_.push_back(shown);
}

void SceneMaker::setTitles() {
    const auto nameOf = [&](int index) {
        const std::string_view name = index == noItem ? "" : tree_[views_[static_cast<std::size_t>(index)]].name();
        return isNameless(name) ? std::string() : std::string(lastName(name));
    };
    for (std::size_t index = 0; index < scene_.items.size(); ++index) {
        Item& item = scene_.items[index];
        const std::string_view name = tree_[views_[index]].name();
        setEnds(index);
        if (!isNameless(name)) {
            item.title = name;
            continue;
        }
        std::string ends = nameOf(item.client);
        const std::string supplier = nameOf(item.supplier);
        ends += (ends.empty() || supplier.empty() ? "" : " - ") + supplier;
        if (item.kind == "AssociationViewNew") {
            for (std::size_t part = index + 1;
                 part < scene_.items.size() && scene_.items[part].parent == static_cast<int>(index); ++part) {
                const std::string end = nameOf(itemOf(views_[part], "supplier"));
                ends += (ends.empty() || end.empty() ? "" : " - ") + end;
            }
        }
        item.title = item.kind.empty() ? "view" : item.kind;
        if (!ends.empty()) {
            item.title.append(": ").append(ends);
        }
    }
}

void SceneMaker::measure() {
    bool isEmpty = true;
    for (const Item& item : scene_.items) {
        if (item.hasBox) {
            include(scene_.bounds, isEmpty, item.box);
            include(scene_.bounds, isEmpty, item.icon == Shape::none ? item.box : item.iconBox);
        }
        for (const Point& point : item.route) {
            include(scene_.bounds, isEmpty, {point.x, point.y, 0, 0});
        }
        for (const Rectangle& bar : item.bars) {
            include(scene_.bounds, isEmpty, bar);
        }
        for (const Text& text : item.texts) {
            include(scene_.bounds, isEmpty, text.room());
        }
    }
    if (isEmpty) {
        scene_.bounds = {0, 0, 300, 200};
    }
    scene_.bounds = {scene_.bounds.x - margin, scene_.bounds.y - margin, scene_.bounds.width + 2 * margin,
                     scene_.bounds.height + 2 * margin};
}

std::optional<Point> SceneMaker::location(NodeId object, Key key) const {
    const NodeId found = object == noNode ? noNode : tree_.find(object, key);
    if (tree_[found].kind != NodeKind::location) {
        return std::nullopt;
    }
    return Point{tree_[found].x(), tree_[found].y()};
}

int SceneMaker::itemOf(NodeId view, Key key) const {
    const std::int64_t reference = tree_.reference(view, key);
    const auto found = std::ranges::lower_bound(byReference_, reference, {}, &Referred::reference);
    return found != byReference_.end() && found->reference == reference ? found->item : noItem;
}

Font SceneMaker::fontOf(NodeId view, NodeId label) const {
    Font font;
    double points = usualSize;
    for (const NodeId owner : {view, label}) {
        const NodeId described = owner == noNode ? noNode : tree_.find(owner, "font");
        if (described == noNode) {
            continue;
        }
        const auto flag = [&](Key key, bool& value) {
            value = tree_.find(described, key) == noNode ? value : tree_.isTrue(described, key);
        };
        points = tree_.number(described, "size", points);
        flag("bold", font.isBold);
        flag("italics", font.isItalic);
        flag("underline", font.isUnderlined);
        flag("strike", font.isStruck);
        if (const std::string_view face = tree_.text(described, "face"); !face.empty()) {
            font.face = face;
        }
        if (!tree_.isTrue(described, "default_color")) {
            font.colour = toColour(tree_.number(described, "color", 0));
        }
    }
    if (!(points > 0)) {
        points = usualSize;
    }
    font.size = std::max(1.0, std::round(std::min(points, largestSize) * pixelsPerPoint)) * unitsPerPixel;
    return font;
}

NodeId SceneMaker::labelOf(NodeId view) const {
    const NodeId label = tree_.find(view, "label");
    return tree_[label].kind == NodeKind::object ? label : noNode;
}

/// The label of a box, or the name of what it shows: views have it behind its packages.
std::string_view SceneMaker::labelText(std::size_t index) const {
    const NodeId view = views_[index];
    const NodeId label = labelOf(view);
    const std::string_view text = label == noNode ? tree_.text(view, "label") : tree_.text(label, "label");
    const std::string_view name = tree_[view].name();
    if (!text.empty() || isNameless(name)) {
        return text;
    }
    const std::string_view own = shown_[index] != noNode ? std::string_view(tree_[shown_[index]].name()) : "";
    return !own.empty() && name.ends_with(own) ? own : lastName(name); // its own may have "::" in it
}

LabelPlace SceneMaker::placeOf(NodeId label) const {
    LabelPlace place;
    if (label != noNode) {
        place.at = location(label, "location");
        place.isCentred = tree_.number(label, "anchor_loc", 0) == 1;
        place.isLeft = tree_.number(label, "justify", 0) == 1;
        place.width = std::max(0.0, tree_.number(label, "max_width", 0));
        place.lines = tree_.number(label, "nlines", 1);
    }
    return place;
}

void SceneMaker::writeLine(Item& item, std::string text, const Font& font, Point at, Anchor anchor) {
    if (!text.empty()) {
        const double width = textWidth(text, font.size, font.isBold);
        item.texts.push_back({at, anchor, width, font, std::move(text)});
    }
}

void SceneMaker::write(Item& item, std::string_view text, const Font& font, const LabelPlace& place) {
    const double height = lineHeight(font.size);
    const double wrap = place.lines > 1 ? place.width * 1.05 : 0;
    const Point at = place.at.value_or(item.box.centre());
    const bool isCentred = place.isCentred || !place.at;
    const bool isLeft = place.isLeft && !isCentred;
    const double x = isLeft || isCentred ? at.x : at.x + place.width / 2;
    const Anchor anchor = isLeft ? Anchor::start : Anchor::middle;
    if (isOneLine(text, wrap)) { // as most are
        const double top = isCentred ? at.y - height / 2 : at.y;
        writeLine(item, std::string(text), font, {x, top + height * baseLine}, anchor);
        return;
    }
    std::vector<std::string> lines = linesOf(text, font.size, font.isBold, wrap);
    double top = isCentred ? at.y - height * static_cast<double>(lines.size()) / 2 : at.y;
    for (std::string& line : lines) {
        writeLine(item, std::move(line), font, {x, top + height * baseLine}, anchor);
        top += height;
    }
}

void SceneMaker::writeLabel(Item& item, NodeId view, NodeId label) {
    const std::string_view text = tree_.text(label, "label");
    if (!text.empty() && !tree_.isTrue(label, "hidden")) {
        write(item, text, fontOf(view, label), placeOf(label));
    }
}

} // namespace layout
