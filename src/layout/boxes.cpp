#include "layout/SceneMaker.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace layout {

namespace {

constexpr double headHeight = 120; // of a lifeline
constexpr double iconHeight = 110; // above the name in it
constexpr double barWidth = 32;    // of an activation
constexpr double rowWidth = 1800;  // of views without a place

} // namespace

void SceneMaker::makeBox(std::size_t index) {
    Item& item = scene_.items[index];
    const ViewKind* kind = kinds_[index];
    static constexpr ViewKind unknown{"", Shape::rectangle, Contents::label, 300, 110};
    const ViewKind& row = kind != nullptr ? *kind : unknown;
    if (row.shape == Shape::lifeline) {
        makeLifeline(index);
    } else if (row.contents == Contents::members) {
        makeClass(index);
    } else if (row.contents == Contents::note) {
        makeNote(index);
    } else {
        makeLabelled(index, row);
    }
    if (item.isMissing) {
        item.isDashed = true;
    }
    reach_[index] = item.box;
    for (const Text& text : item.texts) {
        const Rectangle room = text.room();
        Rectangle& reach = reach_[index];
        const double right = std::max(reach.right(), room.right());
        const double bottom = std::max(reach.bottom(), room.bottom());
        reach.x = std::min(reach.x, room.x);
        reach.y = std::min(reach.y, room.y);
        reach.width = right - reach.x;
        reach.height = bottom - reach.y;
    }
}

Rectangle SceneMaker::boxOf(NodeId view, const Item& /*item*/, double width, double height) const {
    const double givenWidth = tree_.number(view, "width", 0);
    const double givenHeight = tree_.number(view, "height", 0);
    return around(location(view, "location").value_or(Point{}), givenWidth > 0 ? givenWidth : width,
                  givenHeight > 0 ? givenHeight : height);
}

void SceneMaker::makeLabelled(std::size_t index, const ViewKind& kind) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    const NodeId label = labelOf(view);
    const std::string_view text = labelText(index);
    Font font = fontOf(view, label);
    LabelPlace place = placeOf(label);
    double width = kind.width;
    double height = kind.height;
    Contents contents = kind.contents;
    if (kind.shape == Shape::rounded) {
        if (const StateKind* state = findStateKind(tree_[view].head().firstName)) {
            item.shape = state->shape;
            width = state->width;
            height = state->height;
            contents = state->contents;
        }
    }
    if (item.kind == "SynchronizationView" && !tree_.isTrue(view, "sync_is_horizontal")) {
        std::swap(width, height);
    }
    const bool isBelow = place.at && place.isCentred && item.shape == Shape::oval; // an oval, and the name below
    if (contents == Contents::label && !isBelow) {
        const double wrap = place.lines > 1 ? place.width * 1.05 : 0;
        const std::vector<std::string> lines = linesOf(text, font.size, font.isBold, wrap);
        double widest = 0;
        for (const std::string& line : lines) {
            widest = std::max(widest, textWidth(line, font.size, font.isBold));
        }
        width = std::max(width, widest + 4 * padding);
        height = std::max(height, lineHeight(font.size) * static_cast<double>(lines.size()) + 2 * padding);
        if (item.shape == Shape::oval) {
            width *= 1.2;
        }
    }
    if (item.shape == Shape::none) {
        width = std::max(1.0, textWidth(text, font.size, font.isBold));
        height = lineHeight(font.size);
        if (!place.at) {
            place.at = location(view, "location");
            place.isCentred = true;
            place.width = tree_.number(view, "max_width", 0);
            place.lines = tree_.number(view, "nlines", 1);
        }
    }
    item.box = boxOf(view, item, width, height);
    if (item.shape == Shape::swimlane) {
        item.box.x = location(view, "location").value_or(Point{}).x;
        item.box.y = 0;
        isPlaced_[index] = true;
        item.texts.clear();
        write(item, text, font, {Point{item.box.x + item.box.width / 2, lineHeight(font.size)}, true, false, 0, 1});
        return;
    }
    if (!tree_.isTrue(label, "hidden") || label == noNode) {
        if (!place.at && contents == Contents::beside) {
            place.at = Point{item.box.centre().x, item.box.bottom() + lineHeight(font.size)};
            place.isCentred = true;
        }
        if (contents == Contents::label && label == noNode) {
            font = fitting(font, text, item.box.width - padding);
        }
        write(item, text, font, place);
    }
    const NodeId stereotype = tree_.find(view, "stereotype");
    if (tree_[stereotype].kind == NodeKind::object) {
        writeLabel(item, view, stereotype);
    }
}

void SceneMaker::makeNote(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    const NodeId label = labelOf(view);
    const std::string_view text = labelText(index);
    const ViewKind& kind = *kinds_[index];
    Font font = fontOf(view, label);
    const LabelPlace place = placeOf(label);
    const double givenWidth = tree_.number(view, "width", 0);
    const double width = givenWidth > 0 ? givenWidth : kind.width * 2;
    const double room = std::max(width - 4 * padding, padding) / faceSpare;
    std::vector<std::string> lines = linesOf(text, font.size, font.isBold, room);
    const auto heightOf = [&] { return lineHeight(font.size) * static_cast<double>(lines.size()) + 2 * padding; };
    item.box = boxOf(view, item, width, std::max(kind.height, heightOf()));
    for (int tries = 0; tries < 3 && heightOf() > item.box.height && font.size > 16; ++tries) {
        font.size *= std::max(smallestScale, std::sqrt(item.box.height / heightOf()));
        lines = linesOf(text, font.size, font.isBold, room);
    }
    const double step = lineHeight(font.size);
    const bool isInside = place.at && !place.isCentred && item.box.contains(*place.at, 0) &&
                          place.at->y + step * static_cast<double>(lines.size()) <= item.box.bottom() + 1;
    double top = isInside ? place.at->y : item.box.y + padding;
    const bool isLeft = place.isLeft || label == noNode;
    for (std::string& line : lines) {
        const Point at{isLeft ? item.box.x + 2 * padding : item.box.centre().x, top + step * baseLine};
        writeLine(item, std::move(line), font, at, isLeft ? Anchor::start : Anchor::middle);
        top += step;
    }
}

void SceneMaker::makeLifeline(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    const Point at = location(view, "location").value_or(Point{});
    const double width = tree_.number(view, "width", 0);
    const double height = tree_.number(view, "height", 0);
    const ViewKind& kind = *kinds_[index];
    item.head = headHeight;
    item.box = {at.x - (width > 0 ? width : kind.width) / 2, at.y - headHeight / 2, width > 0 ? width : kind.width,
                height > headHeight ? height : kind.height};
    for (NodeId part = tree_[view].first; part != noNode; part = tree_[part].next) {
        if (tree_[part].text() == "Focus_Of_Control" && tree_[part].kind == NodeKind::object) {
            const Point top = location(part, "location").value_or(at);
            const double length = tree_.number(part, "height", 0);
            const double shift = tree_.isTrue(part, "Nested") ? barWidth / 2 : 0;
            if (length > 1) {
                item.bars.push_back({top.x - barWidth / 2 + shift, top.y, barWidth, length});
            }
        }
    }
    const NodeId label = labelOf(view);
    std::string text(tree_.text(label, "label"));
    const NodeId object = shown_[index];
    if (label == noNode || text.empty()) {
        const std::string_view name = tree_[view].name();
        const std::string_view type = object == noNode ? std::string_view() : tree_.text(object, "class");
        text = isNameless(name) ? "" : std::string(lastName(name));
        text += type.empty() ? "" : " : " + std::string(lastName(type));
    }
    Font font = fontOf(view, label);
    const std::string_view iconName = tree_.text(view, "icon");
    if (const Icon* icon = findIcon(iconName); icon != nullptr && tree_.text(view, "icon_style") != "None") {
        item.icon = icon->shape;
    }
    LabelPlace place = placeOf(label);
    if (item.icon == Shape::none && (!place.at || !item.box.contains(*place.at, 0))) {
        place.at = at;
        place.isCentred = true;
    } else if (item.icon != Shape::none) {
        const double step = lineHeight(font.size);
        place.at = Point{at.x, item.box.y + headHeight - step * 0.6};
        place.isCentred = true;
        item.iconBox = {item.box.x, place.at->y - step / 2 - iconHeight, item.box.width, iconHeight};
    }
    if (place.lines <= 1 && item.icon == Shape::none) {
        font = fitting(font, text, item.box.width - padding);
    }
    write(item, text, font, place);
}

void SceneMaker::makeIcon(std::size_t index, const Icon& icon) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    const NodeId label = labelOf(view);
    const Font font = fontOf(view, label);
    item.shape = icon.shape;
    item.box = boxOf(view, item, icon.width, icon.height);
    LabelPlace place = placeOf(label);
    if (!place.at) {
        place.at = Point{item.box.centre().x, item.box.bottom() + lineHeight(font.size) * 0.7};
        place.isCentred = true;
    }
    const NodeId stereotype = tree_.find(view, "stereotype");
    if (tree_[stereotype].kind == NodeKind::object) {
        writeLabel(item, view, stereotype);
    }
    write(item, labelText(index), font, place);
}

void SceneMaker::placeUnplaced() {
    double bottom = 0;
    bool isFirst = true;
    for (std::size_t index = 0; index < scene_.items.size(); ++index) {
        if (scene_.items[index].hasBox && isPlaced_[index]) {
            bottom = isFirst ? reach_[index].bottom() : std::max(bottom, reach_[index].bottom());
            isFirst = false;
        }
    }
    const double gap = 300;
    Point next{100, bottom + gap / 2};
    double rowHeight = 0;
    bool isLow = false; // every other one, so that lines do not cross those beside
    for (std::size_t index = 0; index < scene_.items.size(); ++index) {
        Item& item = scene_.items[index];
        if (!item.hasBox || isPlaced_[index]) {
            continue;
        }
        Rectangle& reach = reach_[index];
        const double dx = next.x - reach.x;
        const double dy = next.y + (isLow ? gap / 2 : 0) - reach.y;
        isLow = !isLow;
        const auto move = [&](auto& what) {
            what.x += dx;
            what.y += dy;
        };
        move(item.box);
        move(item.iconBox);
        move(reach);
        std::ranges::for_each(item.bars, move);
        std::ranges::for_each(item.texts, [&](Text& text) { move(text.at); });
        std::ranges::for_each(item.separators, [&](double& height) { height += dy; });
        rowHeight = std::max(rowHeight, reach.height + gap / 2);
        next.x += reach.width + gap;
        if (next.x > rowWidth) {
            next = {100, next.y + rowHeight + gap};
            rowHeight = 0;
            isLow = false;
        }
    }
}

void SceneMaker::stretchSwimlanes() {
    double bottom = 400;
    bool hasSwimlanes = false;
    for (std::size_t index = 0; index < scene_.items.size(); ++index) {
        const Item& item = scene_.items[index];
        hasSwimlanes = hasSwimlanes || item.shape == Shape::swimlane;
        if (item.hasBox && item.shape != Shape::swimlane) {
            bottom = std::max(bottom, reach_[index].bottom());
        }
        for (const Point& point : item.route) {
            bottom = std::max(bottom, point.y);
        }
    }
    for (Item& item : scene_.items) {
        if (hasSwimlanes && item.shape == Shape::swimlane) {
            item.box.height = bottom + 100;
            item.separators = {lineHeight(fontOf(noNode, noNode).size) * 2};
        }
    }
}

} // namespace layout
