#include "layout/SceneMaker.h"

#include <algorithm>
#include <cmath>

namespace layout {

namespace {

constexpr double labelGap = 30; // between a label and what it is at

} // namespace

void SceneMaker::makeAssociation(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    if (isBare(view) && !isNameless(tree_[view].name())) {
        Point at = anchorOf(static_cast<int>(index));
        at.y -= labelGap;
        write(item, lastName(tree_[view].name()), fontOf(view, noNode), {at, true, false, 0, 1});
    } else {
        writeLineLabels(index);
    }
}

const std::vector<NodeId>& SceneMaker::rolesOf(NodeId association) {
    if (association != rolesOwner_) {
        rolesOwner_ = association;
        roles_.clear();
        const NodeId list = association == noNode ? noNode : tree_.find(association, "roles");
        for (NodeId role = tree_[list].first; list != noNode && role != noNode; role = tree_[role].next) {
            roles_.push_back(role);
        }
    }
    return roles_;
}

void SceneMaker::makeRole(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    std::vector<Point> bends = bendsOf(view);
    if (item.parent == noItem) { // of no association
        leadLine(index, std::move(bends));
        writeLineLabels(index);
        return;
    }
    if (item.client == noItem) {
        item.client = item.parent;
    }
    const int other =
        index > 0 && scene_.items[index - 1].kind == "RoleView" && scene_.items[index - 1].parent == item.parent
            ? scene_.items[index - 1].supplier
            : noItem;
    const bool isPlaced = location(views_[static_cast<std::size_t>(item.parent)], "location").has_value();
    if (other != noItem && other == item.supplier && bends.empty() && !isPlaced &&
        scene_.items[static_cast<std::size_t>(other)].hasBox) {
        // the second end at the same class: round its corner
        const Point anchor = anchorOf(item.client);
        bends = {{scene_.items[static_cast<std::size_t>(other)].box.centre().x, anchor.y}};
    }
    leadLine(index, std::move(bends));

    // the elements: this role and the one at the other end
    const NodeId association = shown_[static_cast<std::size_t>(item.parent)];
    NodeId role = shown_[index];
    NodeId otherRole = noNode;
    const std::size_t place = index - static_cast<std::size_t>(item.parent) - 1;
    const std::vector<NodeId>& roles = rolesOf(association);
    if (role == noNode && place < roles.size()) {
        role = roles[place];
    }
    if (roles.size() > 1) {
        otherRole = roles[0] != role ? roles[0] : roles[1];
    }
    if (role == noNode || tree_[role].text() != "Role") {
        writeLineLabels(index);
        return;
    }
    const auto holds = [&](NodeId object, Key key) { return object != noNode && tree_.isTrue(object, key); };
    if (holds(role, "is_aggregate")) {
        const bool isComposite = otherRole != noNode && tree_.text(otherRole, "Containment") == "By Value";
        item.endMark = isComposite ? Mark::filledDiamond : Mark::diamond;
    } else if (holds(role, "is_navigable") && !holds(otherRole, "is_navigable")) {
        item.endMark = Mark::arrow;
    }
    writeRoleTexts(item, role);
    if (!isBare(view)) {
        writeLineLabels(index);
    } else if (item.route.size() >= 2) {
        const Point end = item.route.back();
        const Point before = item.route[item.route.size() - 2];
        const double length = std::max(1.0, distance(end, before));
        const Point along{(before.x - end.x) / length, (before.y - end.y) / length};
        const bool isUpright = std::abs(along.y) > std::abs(along.x);
        const std::string multiplicity(tree_.text(role, "client_cardinality"));
        std::string name(isNameless(tree_[role].name()) ? "" : tree_[role].name());
        name.insert(0, name.empty() ? "" : "+");
        const auto put = [&](const std::string& text, double side) {
            Font font = fontOf(view, noNode);
            const double half = textWidth(text, font.size, false) / 2;
            const Point at = isUpright ? Point{end.x + side * (half + 15), end.y + along.y * 70}
                                       : Point{end.x + along.x * (half + 50), end.y + side * labelGap};
            write(item, text, font, {at, true, false, 0, 1});
        };
        put(name, -1);
        put(multiplicity, 1);
    }
}

/// The qualifiers of a role: a box at its end of the line.
void SceneMaker::writeRoleTexts(Item& item, NodeId role) {
    const NodeId keys = tree_.find(role, "keys");
    std::vector<std::string> names;
    for (NodeId key = tree_[keys].first; keys != noNode && key != noNode; key = tree_[key].next) {
        if (tree_[key].kind == NodeKind::object) {
            names.emplace_back(tree_[key].name());
        }
    }
    if (names.empty() || item.route.size() < 2) {
        return;
    }
    const Font font = fontOf(noNode, noNode);
    const double step = lineHeight(font.size);
    double width = 40;
    for (const std::string& name : names) {
        width = std::max(width, textWidth(name, font.size, false) + 16);
    }
    const double height = step * static_cast<double>(names.size()) + 8;
    const Point end = item.route.back();
    const Point before = item.route[item.route.size() - 2];
    const double dx = before.x - end.x;
    const double dy = before.y - end.y;
    const bool isAcross = std::abs(dx) >= std::abs(dy);
    const Rectangle box = isAcross ? Rectangle{dx < 0 ? end.x - width : end.x, end.y - height / 2, width, height}
                                   : Rectangle{end.x - width / 2, dy < 0 ? end.y - height : end.y, width, height};
    item.bars.push_back(box);
    double top = box.y + 4;
    for (std::string& name : names) {
        writeLine(item, std::move(name), font, {box.centre().x, top + step * baseLine}, Anchor::middle);
        top += step;
    }
}

} // namespace layout
