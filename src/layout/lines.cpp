#include "layout/SceneMaker.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace layout {

namespace {

constexpr double nearby = 2;      // a point so far from an outline is on it
constexpr double smallGap = 40;   // between a line and its box, which goes on straight
constexpr double labelGap = 30;   // between a label and what it is at
constexpr double looseEnd = 150;  // of a line that leads nowhere
constexpr double loopWidth = 100; // of a line from a box to itself
constexpr double loopHeight = 60;
constexpr double selfMessageHeight = 40;

Outline outlineOf(Shape shape) {
    switch (shape) {
    case Shape::oval:
    case Shape::startState:
    case Shape::endState:
    case Shape::circle:
        return Outline::ellipse;
    case Shape::decision:
        return Outline::rhombus;
    default:
        return Outline::rectangle;
    }
}

/// Whether the outline that its author saw may have been that of the picture with its label.
bool hasLabelOutside(Shape shape) {
    constexpr std::array shapes{Shape::oval,    Shape::actor,  Shape::boundary,   Shape::bar,
                                Shape::control, Shape::entity, Shape::startState, Shape::endState};
    return std::ranges::find(shapes, shape) != shapes.end();
}

/// Where a line from `from` that is at `end` on a component's box, perhaps between its lugs, meets the component.
Point onComponent(const Rectangle& box, const Point& from, const Point& end) {
    const ComponentParts parts = componentParts(box);
    std::optional<Point> first = entryInto(parts.body, from, end);
    for (const Rectangle& lug : parts.lugs) {
        const std::optional<Point> met = entryInto(lug, from, end);
        if (met && (!first || distance(from, *met) < distance(from, *first))) {
            first = met;
        }
    }
    return first.value_or(end);
}

/// The place at the edge of the activations at a height where a message leaves for `other`, or comes from there.
double atActivations(const Item& lifeline, const Point& at, double other) {
    double x = at.x;
    for (const Rectangle& bar : lifeline.bars) { // an activation precedes those within it
        if (bar.contains({x, at.y}, nearby)) {
            x = other >= x ? bar.right() : bar.x;
        }
    }
    return x;
}

/// The arrow of a message by the way in which it is sent.
struct Synchronization {
    std::string_view word;
    Mark mark;
    bool isDashed;
};

constexpr auto synchronizations = std::to_array<Synchronization>({
    {"Procedure Call", Mark::filledArrow, false},
    {"Synchronous", Mark::filledArrow, false},
    {"Return", Mark::arrow, true},
});

} // namespace

void SceneMaker::setEnds(std::size_t index) {
    Item& item = scene_.items[index];
    item.client = itemOf(views_[index], "client");
    item.supplier = itemOf(views_[index], "supplier");
}

/// Whether the view says nothing of its looks. Others have all the labels that are shown.
bool SceneMaker::isBare(NodeId view) const {
    return labelOf(view) == noNode && tree_.find(view, "line_color") == noNode &&
           tree_.find(view, "stereotype") == noNode;
}

std::vector<Point> SceneMaker::bendsOf(NodeId view) const {
    std::vector<Point> bends;
    const NodeId list = tree_.find(view, "vertices");
    for (NodeId point = tree_[list].first; list != noNode && point != noNode; point = tree_[point].next) {
        if (tree_[point].kind == NodeKind::location) {
            bends.push_back({tree_[point].x(), tree_[point].y()});
        }
    }
    const auto origin = location(view, "origin_attachment");
    const auto end = location(view, "terminal_attachment");
    if (bends.empty() && origin && end) {
        bends = {*origin, *end};
        if (std::abs(origin->x - end->x) > nearby && std::abs(origin->y - end->y) > nearby) {
            bends.insert(bends.begin() + 1, {origin->x, end->y}); // right angles
        }
        return bends;
    }
    if (!bends.empty() && origin && distance(*origin, bends.front()) > nearby) {
        bends.insert(bends.begin(), *origin);
    }
    if (!bends.empty() && end && distance(*end, bends.back()) > nearby) {
        bends.push_back(*end);
    }
    return bends;
}

/// Where a line goes that leads to this item: the middle of a box; of a line its location or the middle of its way.
Point SceneMaker::anchorOf(int index) {
    if (index == noItem) {
        return {};
    }
    if (index == anchored_) {
        return anchor_;
    }
    const Item& item = scene_.items[static_cast<std::size_t>(index)];
    if (item.hasBox) {
        return item.shape == Shape::lifeline ? Point{item.box.centre().x, item.box.y + item.head / 2}
                                             : item.box.centre();
    }
    const NodeId view = views_[static_cast<std::size_t>(index)];
    if (const auto at = location(view, "location"); at && item.kind == "AssociationViewNew") {
        return *at;
    }
    if (!item.route.empty()) {
        return middleOf(item.route);
    }
    if (const std::vector<Point> bends = bendsOf(view); !bends.empty()) {
        return middleOf(bends);
    }
    const Point anchor = anchorBetweenEnds(index);
    if (item.kind == "AssociationViewNew") { // its many roles ask for it again
        anchored_ = index;
        anchor_ = anchor;
    }
    return anchor;
}

/// The same of a line of which the file does not say where it is.
Point SceneMaker::anchorBetweenEnds(int index) const {
    const Item& item = scene_.items[static_cast<std::size_t>(index)];
    const NodeId view = views_[static_cast<std::size_t>(index)];
    std::array<const Item*, 2> ends{};
    std::size_t count = 0;
    const auto take = [&](int end) {
        const Item* other = end == noItem ? nullptr : &scene_.items[static_cast<std::size_t>(end)];
        if (other != nullptr && other->hasBox && count < ends.size()) {
            ends[count++] = other;
        }
    };
    take(item.client);
    take(item.supplier);
    for (auto part = static_cast<std::size_t>(index) + 1;
         count < ends.size() && part < scene_.items.size() && scene_.items[part].parent == index; ++part) {
        take(itemOf(views_[part], "supplier"));
    }
    if (count == 2 && ends[0] != ends[1]) {
        // the middle of the gap between two boxes
        const Point a = ends[0]->box.centre();
        const Point b = ends[1]->box.centre();
        return middleOf(
            std::array{clipped(ends[0]->box, Outline::rectangle, b), clipped(ends[1]->box, Outline::rectangle, a)});
    }
    if (count > 0) {
        return {ends[0]->box.right() + looseEnd, ends[0]->box.y - loopHeight};
    }
    return location(view, "location").value_or(Point{});
}

/// Has the line, whose last point leads to the item `end`, end there. `other` is where it comes from when it has no
/// point yet.
void SceneMaker::leadTo(std::vector<Point>& line, int end, const Point& other) {
    const Item& item = scene_.items[static_cast<std::size_t>(end)];
    if (item.hasBox) {
        leadToBox(line, end, other);
        const Point from = line.size() > 1 ? line[line.size() - 2] : other;
        if (item.shape == Shape::component && !item.box.contains(from, 0)) {
            line.back() = onComponent(item.box, from, line.back());
        }
    } else if (const Point anchor = anchorOf(end); line.empty() || distance(line.back(), anchor) > nearby) {
        line.push_back(anchor);
    }
}

void SceneMaker::leadToBox(std::vector<Point>& line, int end, const Point& other) {
    const Item& item = scene_.items[static_cast<std::size_t>(end)];
    const Outline outline = outlineOf(item.shape);
    const auto isWithin = [&](const Point& point) {
        const Rectangle inner{item.box.x + nearby, item.box.y + nearby, item.box.width - 2 * nearby,
                              item.box.height - 2 * nearby};
        return inner.contains(point, 0);
    };
    std::optional<Point> inside;
    while (!line.empty() && isWithin(line.back())) {
        inside = line.back();
        line.pop_back();
    }
    if (!inside && !line.empty()) {
        const bool isOnBox = item.box.contains(line.back(), nearby) && outline == Outline::rectangle;
        const Rectangle& reach = reach_[static_cast<std::size_t>(end)];
        const bool isAtLabel = hasLabelOutside(item.shape) && reach.contains(line.back(), labelGap);
        if (isOnBox || isAtLabel) {
            return;
        }
        if (outline == Outline::rectangle && item.box.contains(line.back(), smallGap)) {
            line.push_back({std::clamp(line.back().x, item.box.x, item.box.right()),
                            std::clamp(line.back().y, item.box.y, item.box.bottom())});
            return;
        }
    }
    const Point from = line.empty() ? other : line.back();
    if (inside && outline == Outline::rectangle && !isWithin(from)) {
        // where the file's own way crosses the outline
        const double dx = inside->x - from.x;
        const double dy = inside->y - from.y;
        double part = 0;
        if (from.x < item.box.x || from.x > item.box.right()) {
            part = std::max(part, ((dx > 0 ? item.box.x : item.box.right()) - from.x) / dx);
        }
        if (from.y < item.box.y || from.y > item.box.bottom()) {
            part = std::max(part, ((dy > 0 ? item.box.y : item.box.bottom()) - from.y) / dy);
        }
        line.push_back({from.x + dx * part, from.y + dy * part});
        return;
    }
    line.push_back(clipped(item.box, outline, from));
}

void SceneMaker::leadLine(std::size_t index, std::vector<Point> bends) {
    Item& item = scene_.items[index];
    const auto isBox = [&](int end) { return end != noItem && scene_.items[static_cast<std::size_t>(end)].hasBox; };
    if (item.client != noItem && item.client == item.supplier && bends.empty() && isBox(item.client)) {
        const Rectangle& box = scene_.items[static_cast<std::size_t>(item.client)].box;
        const double middle = box.centre().y;
        const double height = std::min(loopHeight, box.height) / 2;
        item.route = {{box.right(), middle - height},
                      {box.right() + loopWidth, middle - height},
                      {box.right() + loopWidth, middle + height},
                      {box.right(), middle + height}};
        return;
    }
    const bool isBare = bends.empty();
    const Point client = anchorOf(item.client);
    const Point supplier = item.supplier != noItem ? anchorOf(item.supplier) : Point{client.x + looseEnd, client.y};
    const bool hasClient = item.client != noItem && item.client != static_cast<int>(index);
    const bool hasSupplier = item.supplier != noItem && item.supplier != static_cast<int>(index);
    if (hasSupplier) {
        leadTo(bends, item.supplier, client);
    }
    const std::size_t before = bends.size();
    std::ranges::reverse(bends);
    if (hasClient) {
        // without bends the way is that between the middles, whatever the supplier's end became
        if (isBare && before == 1 && hasSupplier) {
            std::vector<Point> start;
            leadTo(start, item.client, supplier);
            bends.push_back(start.back());
        } else {
            leadTo(bends, item.client, supplier);
        }
    }
    std::ranges::reverse(bends);
    if (bends.empty()) {
        bends.push_back(location(views_[index], "location").value_or(client));
    }
    if (bends.size() == 1) {
        if (hasClient && !hasSupplier) {
            bends.push_back({bends.front().x + looseEnd, bends.front().y});
        } else {
            bends.insert(bends.begin(), {bends.front().x - looseEnd, bends.front().y});
        }
    }
    item.route = std::move(bends);
}

void SceneMaker::makeLine(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    if (item.kind == "AssociationViewNew") {
        makeAssociation(index);
        return;
    }
    if (item.kind == "RoleView") {
        makeRole(index);
        return;
    }
    if (item.kind == "InterMessView" || item.kind == "SelfMessView") {
        makeMessage(index);
        return;
    }
    const ViewKind* kind = kinds_[index];
    item.endMark = kind != nullptr ? kind->mark : Mark::arrow;
    const int tree = itemOf(view, "drawSupplier");
    if (tree != noItem && scene_.items[static_cast<std::size_t>(tree)].kind == "InheritTreeView") {
        // to the tree's own line, which has the triangle
        std::vector<Point> bends = bendsOf(view);
        const auto trunk = location(views_[static_cast<std::size_t>(tree)], "location");
        if (!bends.empty() && trunk) {
            std::ranges::reverse(bends);
            leadTo(bends, item.client != noItem ? item.client : tree, bends.front());
            std::ranges::reverse(bends);
            if (distance(bends.back(), *trunk) > nearby) {
                bends.push_back(*trunk);
            }
            item.route = std::move(bends);
            item.endMark = Mark::none;
            item.tree = tree;
            if (item.route.size() < 2) {
                item.route.push_back(*trunk);
            }
            writeLineLabels(index);
            return;
        }
    }
    if (item.kind == "InheritTreeView") {
        item.fillColour = white;
    }
    leadLine(index, bendsOf(view));
    writeLineLabels(index);
}

void SceneMaker::makeMessage(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    const NodeId label = labelOf(view);
    const double y = location(view, "location").value_or(Point{}).y;
    const Point from = location(view, "origin").value_or(Point{anchorOf(item.client).x, y});
    const Point to = location(view, "terminus").value_or(Point{anchorOf(item.supplier).x, y});
    item.endMark = Mark::arrow;
    const auto atEdge = [&](int end, const Point& at, double other) {
        return end == noItem ? at : Point{atActivations(scene_.items[static_cast<std::size_t>(end)], at, other), at.y};
    };
    if (item.kind == "SelfMessView" || item.client == item.supplier) {
        const double right = from.x + loopWidth;
        const double low = from.y + selfMessageHeight;
        item.route = {
            atEdge(item.client, from, right), {right, from.y}, {right, low}, atEdge(item.client, {from.x, low}, right)};
    } else {
        item.route = {atEdge(item.client, from, to.x), atEdge(item.supplier, to, from.x)};
    }
    const NodeId message = label == noNode ? noNode : elements_.withQuid(tree_.text(label, "quidu"));
    const std::string_view word = message == noNode ? std::string_view() : tree_.text(message, "synchronization");
    const auto* found = std::ranges::find(synchronizations, word, &Synchronization::word);
    if (found != synchronizations.end()) {
        item.endMark = found->mark;
        item.isDashed = found->isDashed;
    }
    if (label != noNode) {
        writeLabel(item, view, label);
    } else if (isBare(view) && !isNameless(tree_[view].name())) {
        write(item, tree_[view].name(), fontOf(view, noNode),
              {Point{(from.x + to.x) / 2, from.y - labelGap}, true, false, 0, 1});
    }
}

/// The labels that the view has. A line without any has the name and the stereotype of what it shows at its middle.
void SceneMaker::writeLineLabels(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    bool isLabelled = false;
    for (NodeId label = tree_[view].first; label != noNode; label = tree_[label].next) {
        const Node& node = tree_[label];
        if (node.kind == NodeKind::object && (node.key == "label" || node.key == "stereotype")) {
            writeLabel(item, view, label);
            isLabelled = true;
        }
    }
    if (isLabelled || !isBare(view) || item.route.size() < 2 || item.kind == "RoleView" || shown_[index] == noNode) {
        return;
    }
    std::string text(tree_.text(shown_[index], "label"));
    if (text.empty() || tree_.find(view, "stereotype") == noNode) {
        const std::string_view stereotype = tree_.text(shown_[index], "stereotype");
        text = stereotype.empty() ? text : "<<" + std::string(stereotype) + ">> " + text;
    }
    Point at = middleOf(item.route);
    at.y -= labelGap;
    write(item, text, fontOf(view, noNode), {at, true, false, 0, 1});
}

} // namespace layout
