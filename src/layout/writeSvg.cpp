#include "layout/Svg.h"
#include "layout/write.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <tuple>

namespace layout {

namespace {

/// Faces for all scripts, in the order in which they are tried.
constexpr std::string_view faces = "Arial, 'Liberation Sans', Helvetica, 'DejaVu Sans Condensed', 'DejaVu Sans', 'Noto "
                                   "Sans', 'Noto Sans CJK SC', 'Microsoft YaHei', "
                                   "'MS Gothic', 'Malgun Gothic', sans-serif";
constexpr std::string_view usualFace = "Arial";
constexpr std::string_view dashes = R"( stroke-dasharray="14 9")";
constexpr double noteCorner = 36;
constexpr double folderTab = 34;
constexpr double cubeAcross = 70; // how far the sides of a cube go
constexpr double cubeUp = 35;

constexpr std::string_view invisible = R"( fill="none" stroke="none")";
constexpr std::string_view noFill = R"( fill="none")";
constexpr std::string_view black_ = R"( fill="#000000")";
constexpr std::string_view white_ = R"( fill="#ffffff")";
constexpr std::string_view dashedWhite = R"( fill="#ffffff" stroke-dasharray="14 9")";

void drawNothing(Svg& svg, const Item& item) {
    if (item.shape == Shape::none) {
        svg.rectangle(item.box, invisible);
    }
}

void drawRectangle(Svg& svg, const Item& item) {
    svg.rectangle(item.box);
}

void drawShadow(Svg& svg, const Item& item) {
    svg.rectangle(item.box);
    const Rectangle& box = item.box;
    constexpr double depth = 10;
    svg.polyline(std::array{Point{box.right(), box.y + depth}, Point{box.right() + depth, box.y + depth},
                            Point{box.right() + depth, box.bottom() + depth},
                            Point{box.x + depth, box.bottom() + depth}, Point{box.x + depth, box.bottom()}},
                 noFill);
}

void drawPackage(Svg& svg, const Item& item) {
    const Rectangle& box = item.box;
    svg.rectangle(box, invisible);
    const double tab = std::min(folderTab, box.height / 3);
    svg.rectangle({box.x, box.y, box.width * 0.45, tab});
    svg.rectangle({box.x, box.y + tab, box.width, box.height - tab});
}

void drawNote(Svg& svg, const Item& item) {
    const Rectangle& box = item.box;
    svg.rectangle(box, invisible);
    const double fold = std::min({noteCorner, box.width / 2, box.height / 2});
    const Point left{box.right() - fold, box.y};
    const Point right{box.right(), box.y + fold};
    svg.polygon({{box.x, box.y}, left, right, {box.right(), box.bottom()}, {box.x, box.bottom()}});
    svg.polyline(std::array{left, Point{left.x, right.y}, right}, noFill);
}

void drawOval(Svg& svg, const Item& item) {
    svg.rectangle(item.box, invisible);
    svg.ellipse(item.box);
}

void stickMan(Svg& svg, const Rectangle& box) {
    const double size = std::min(box.width / 0.75, box.height);
    const double x = box.centre().x;
    const double top = box.y + (box.height - size) / 2;
    const double head = size * 0.3;
    const double hip = top + size * 0.66;
    const double arms = top + size * 0.42;
    svg.ellipse({x - head / 2, top, head, head});
    svg.line({x, top + head}, {x, hip});
    svg.line({x - size * 0.3, arms}, {x + size * 0.3, arms});
    svg.polyline(std::array{Point{x - size * 0.27, top + size}, Point{x, hip}, Point{x + size * 0.27, top + size}},
                 noFill);
}

void boundarySign(Svg& svg, const Rectangle& box) {
    const double size = std::min(box.height, box.width * 0.75);
    const double left = box.centre().x - size * 0.65;
    const double middle = box.centre().y;
    svg.line({left, middle - size * 0.3}, {left, middle + size * 0.3});
    svg.line({left, middle}, {left + size * 0.3, middle});
    svg.ellipse({left + size * 0.3, middle - size / 2, size, size});
}

void controlSign(Svg& svg, const Rectangle& box) {
    const double size = std::min(box.height, box.width) * 0.92;
    const Rectangle circle = around({box.centre().x, box.bottom() - size / 2}, size, size);
    svg.ellipse(circle);
    const Point tip{circle.centre().x - size * 0.06, circle.y};
    svg.polyline(std::array{Point{tip.x + size * 0.16, tip.y - size * 0.08}, tip,
                            Point{tip.x + size * 0.16, tip.y + size * 0.1}},
                 noFill);
}

void entitySign(Svg& svg, const Rectangle& box) {
    const double size = std::min(box.height, box.width) * 0.96;
    const Rectangle circle = around({box.centre().x, box.bottom() - size / 2}, size, size);
    svg.ellipse(circle);
    svg.line({circle.x, circle.bottom()}, {circle.right(), circle.bottom()});
}

void circleSign(Svg& svg, const Rectangle& box) {
    const double size = std::min(box.height, box.width);
    svg.ellipse(around(box.centre(), size, size));
}

template <void (*sign)(Svg&, const Rectangle&)>
void drawSign(Svg& svg, const Item& item) {
    svg.rectangle(item.box, invisible);
    sign(svg, item.box);
}

void drawComponent(Svg& svg, const Item& item) {
    const ComponentParts parts = componentParts(item.box);
    svg.rectangle(item.box, invisible);
    svg.rectangle(parts.body);
    std::ranges::for_each(parts.lugs, [&](const Rectangle& lug) { svg.rectangle(lug); });
}

template <bool isShaded>
void drawCube(Svg& svg, const Item& item) {
    const Rectangle& box = item.box;
    const double across = std::min(cubeAcross, box.width / 3);
    const double up = std::min(cubeUp, box.height / 3);
    svg.rectangle(box, invisible);
    svg.rectangle({box.x, box.y + up, box.width - across, box.height - up});
    svg.polygon(
        {{box.x, box.y + up}, {box.x + across, box.y}, {box.right(), box.y}, {box.right() - across, box.y + up}});
    const Point low{box.right() - across, box.bottom()};
    const std::string_view side = !isShaded ? "" : svg.theme() == Theme::plain ? black_ : R"( fill="#808080")";
    svg.polygon({{low.x, box.y + up}, {box.right(), box.y}, {box.right(), box.bottom() - up}, low}, side);
}

void drawRounded(Svg& svg, const Item& item) {
    const double radius = std::min({40.0, item.box.width / 2, item.box.height / 2});
    svg.rectangle(item.box, R"( rx=")" + decimal(radius) + R"(")");
}

void drawStart(Svg& svg, const Item& item) {
    svg.rectangle(item.box, invisible);
    svg.ellipse(item.box, black_);
}

void drawEnd(Svg& svg, const Item& item) {
    svg.rectangle(item.box, invisible);
    svg.ellipse(item.box, white_);
    svg.ellipse(around(item.box.centre(), item.box.width * 0.6, item.box.height * 0.6), black_);
}

void drawDecision(Svg& svg, const Item& item) {
    const Rectangle& box = item.box;
    svg.rectangle(box, invisible);
    svg.polygon({{box.centre().x, box.y},
                 {box.right(), box.centre().y},
                 {box.centre().x, box.bottom()},
                 {box.x, box.centre().y}});
}

void drawBar(Svg& svg, const Item& item) {
    svg.rectangle(item.box, black_);
}

struct Sign {
    Shape icon;
    void (*draw)(Svg&, const Rectangle&);
};
constexpr auto signs = std::to_array<Sign>({
    {Shape::actor, stickMan},
    {Shape::boundary, boundarySign},
    {Shape::circle, circleSign},
    {Shape::control, controlSign},
    {Shape::entity, entitySign},
});

void drawLifeline(Svg& svg, const Item& item) {
    const Rectangle& box = item.box;
    const Rectangle head{box.x, box.y, box.width, item.head};
    const auto* sign = std::ranges::find(signs, item.icon, &Sign::icon);
    if (sign != signs.end()) {
        svg.rectangle(head, invisible);
        sign->draw(svg, item.iconBox);
    } else {
        svg.rectangle(head);
    }
    svg.line({box.centre().x, head.bottom()}, {box.centre().x, box.bottom()}, dashes);
}

void drawSwimlane(Svg& svg, const Item& item) {
    svg.rectangle(item.box, noFill);
}

void drawArrowhead(Svg& svg, const Item& item) {
    const Rectangle& box = item.box;
    svg.rectangle(box, invisible);
    const double middle = box.centre().y;
    svg.line({box.x, middle}, {box.right(), middle});
    svg.polyline(std::array{Point{box.right() - 24, middle - 12}, Point{box.right(), middle},
                            Point{box.right() - 24, middle + 12}},
                 noFill);
}

/// How each shape is drawn: its box as the first rectangle, then what is seen. By the number of the shape.
constexpr std::array<void (*)(Svg&, const Item&), shapeCount> shapes{
    drawNothing,        // line
    drawNothing,        // none
    drawRectangle,      // rectangle
    drawShadow,         // shadow
    drawPackage,        // package
    drawNote,           // note
    drawOval,           // oval
    drawSign<stickMan>, // actor
    drawSign<boundarySign>,
    drawSign<controlSign>,
    drawSign<entitySign>,
    drawSign<circleSign>,
    drawComponent,
    drawCube<false>,
    drawCube<true>,
    drawRounded,
    drawStart,
    drawEnd,
    drawDecision,
    drawBar,
    drawLifeline,
    drawSwimlane,
    drawArrowhead,
};

/// A mark at the end of a line, as corners: how far along the line from its end, and how far aside.
struct MarkShape {
    bool isClosed;
    std::string_view fill;
    std::array<Point, 4> corners;
    std::size_t count;
};

constexpr MarkShape openArrow{false, noFill, {{{32, 14}, {0, 0}, {32, -14}}}, 3};
/// By the number of the mark.
constexpr std::array<MarkShape, 6> marks{{
    {},
    openArrow,
    {true, "", {{{32, 13}, {0, 0}, {32, -13}}}, 3},
    {true, white_, {{{42, 24}, {0, 0}, {42, -24}}}, 3},
    {true, white_, {{{0, 0}, {28, 14}, {56, 0}, {28, -14}}}, 4},
    {true, "", {{{0, 0}, {28, 14}, {56, 0}, {28, -14}}}, 4},
}};

void drawMark(Svg& svg, Mark mark, const std::vector<Point>& route, Colour colour) {
    const MarkShape& shape = marks[static_cast<std::size_t>(mark)];
    if (mark == Mark::none || route.size() < 2) {
        return;
    }
    const Point end = route.back();
    std::size_t before = route.size() - 1;
    while (before > 0 && distance(route[before], end) < 1) {
        --before;
    }
    const double length = distance(route[before], end);
    if (!(length > 0)) {
        return;
    }
    const Point along{(route[before].x - end.x) / length, (route[before].y - end.y) / length};
    std::array<Point, std::tuple_size_v<decltype(shape.corners)>> corners;
    for (std::size_t index = 0; index < shape.count; ++index) {
        const Point& corner = shape.corners[index];
        corners[index] = {end.x + along.x * corner.x - along.y * corner.y,
                          end.y + along.y * corner.x + along.x * corner.y};
    }
    std::array<char, longestMore> looks{};
    Pen pen(looks.data());
    if (shape.fill.empty()) {
        pen.put(R"( fill=")").putColour(colour).put(R"(")");
    }
    pen.put(shape.fill).put(R"( stroke-dasharray="none")");
    svg.points(shape.isClosed ? R"(<polygon points=")" : R"(<polyline points=")", std::span(corners).first(shape.count),
               {looks.data(), pen.end()});
}

void drawText(Svg& svg, const Text& text) {
    constexpr std::array<std::string_view, 3> anchors{"", R"( text-anchor="middle")", R"( text-anchor="end")"};
    const Font& font = text.font;
    svg.put([&](Pen& pen) {
        pen.put(R"(<text x=")").put(text.at.x).put(R"(" y=")").put(text.at.y);
        pen.put(R"(" font-size=")").put(font.size).put(R"(")");
        pen.put(anchors[static_cast<std::size_t>(text.anchor)]);
    });
    if (font.face != usualFace && isFace(font.face)) {
        svg.attribute(R"( font-family="')", font.face);
        svg.raw(R"(', )");
        svg.raw(faces);
        svg.raw(R"(")");
    }
    svg.put([&](Pen& pen) {
        pen.put(font.isBold ? R"( font-weight="bold")" : "").put(font.isItalic ? R"( font-style="italic")" : "");
        if (font.isUnderlined || font.isStruck) {
            pen.put(R"( text-decoration=")");
            pen.put(font.isUnderlined && font.isStruck ? "underline line-through"
                    : font.isUnderlined                ? "underline"
                                                       : "line-through");
            pen.put(R"(")");
        }
        pen.put(R"( fill=")").putColour(svg.theme() == Theme::plain ? black : font.colour);
        pen.put(R"(" stroke="none" stroke-dasharray="none">)");
    });
    svg.text(text.text);
    svg.raw("</text>");
}

void startGroup(Svg& svg, const Item& item) {
    const Colours colours(item, svg.theme());
    svg.attribute(R"(<g data-view=")", item.kind);
    if (!item.quid.empty()) {
        svg.attribute(R"( data-quid=")", item.quid);
    }
    if (!item.reference.empty()) {
        svg.attribute(R"( data-ref=")", item.reference);
    }
    svg.put([&](Pen& pen) { pen.put(R"( data-line=")").put(item.line).put(R"(")"); });
    if (!item.file.empty()) {
        svg.attribute(R"( data-file=")", item.file);
    }
    svg.put([&](Pen& pen) {
        pen.put(item.isMissing ? R"( class="missing")" : "");
        pen.put(R"( stroke=")").putColour(colours.line).put(R"(" fill=")").putColour(colours.fill).put(R"(")");
        pen.put(item.isDashed || item.isMissing ? dashes : "").put("><title>");
    });
    svg.text(item.title);
    svg.raw("</title>");
}

void drawItem(Svg& svg, const Item& item) {
    const Colours colours(item, svg.theme());
    shapes[static_cast<std::size_t>(item.shape)](svg, item);
    for (const double height : item.separators) {
        svg.line({item.box.x, height}, {item.box.right(), height});
    }
    if (item.route.size() >= 2) {
        svg.polyline(item.route, noFill);
        drawMark(svg, item.endMark, item.route, colours.line);
        if (item.startMark != Mark::none) {
            drawMark(svg, item.startMark, {item.route.rbegin(), item.route.rend()}, colours.line);
        }
    }
    for (const Rectangle& bar : item.bars) {
        svg.rectangle(bar, item.areBarsDashed ? dashedWhite : white_);
    }
    for (const Text& text : item.texts) {
        drawText(svg, text);
    }
}

} // namespace

void writeSvg(const Scene& scene, Theme theme, text::BufferedOutput& output) {
    Svg svg(theme, output);
    const Rectangle& bounds = scene.bounds;
    svg.put([&](Pen& pen) {
        pen.put(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox=")").put(bounds.x).put(" ").put(bounds.y);
        pen.put(" ").put(bounds.width).put(" ").put(bounds.height).put(R"(")");
    });
    svg.attribute(R"( data-view=")", scene.kind);
    if (!scene.quid.empty()) {
        svg.attribute(R"( data-quid=")", scene.quid);
    }
    svg.put([&](Pen& pen) { pen.put(R"( data-line=")").put(scene.line).put(R"(")"); });
    if (!scene.file.empty()) {
        svg.attribute(R"( data-file=")", scene.file);
    }
    svg.attribute(R"( font-family=")", faces);
    svg.raw(R"( stroke-width="3" stroke-linejoin="round" xml:space="preserve"><title>)");
    for (const std::string& package : scene.packages) {
        svg.text(package);
        svg.raw("::");
    }
    svg.text(scene.name);
    svg.raw("</title>\n");
    svg.rectangle(bounds, R"( fill="#ffffff" stroke="none")"); // pages around it may be dark
    svg.raw("\n");
    const std::vector<Item>& items = scene.items;
    for (std::size_t index = 0; index < items.size(); ++index) {
        startGroup(svg, items[index]);
        drawItem(svg, items[index]);
        const bool hasParts = index + 1 < items.size() && items[index + 1].parent != noItem &&
                              (items[index + 1].parent == static_cast<int>(index));
        if (hasParts) {
            svg.raw("\n");
            continue;
        }
        svg.raw("</g>\n");
        const bool isLastPart = items[index].parent != noItem &&
                                (index + 1 == items.size() || items[index + 1].parent != items[index].parent);
        svg.raw(isLastPart ? "</g>\n" : "");
    }
    svg.raw("</svg>\n");
}

} // namespace layout
