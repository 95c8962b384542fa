#include "layout/markup.h"
#include "layout/write.h"

#include <algorithm>
#include <array>

namespace layout {

namespace {

constexpr double scale = 1.0 / 3; // draw.io has 100 units to an inch
constexpr int decimals = 4;
constexpr double smallest = 0.0001; // of a size

/// How each shape is said there. By the number of the shape.
constexpr std::array<std::string_view, shapeCount> shapes{
    "",                                     // line
    "text;strokeColor=none;fillColor=none", // none
    "rounded=0",
    "rounded=0;shadow=1",
    "shape=folder;tabWidth=50;tabHeight=11;tabPosition=left",
    "shape=note;size=12",
    "shape=ellipse;perimeter=ellipsePerimeter",
    "shape=umlActor",
    "shape=umlBoundary",
    "shape=umlControl",
    "shape=umlEntity",
    "shape=ellipse;perimeter=ellipsePerimeter",
    "shape=module;jettyWidth=20;jettyHeight=10",
    "shape=cube;size=12;direction=east;flipH=1",
    "shape=cube;size=12;direction=east;flipH=1",
    "rounded=1;arcSize=30",
    "shape=ellipse;perimeter=ellipsePerimeter;fillColor=#000000",
    "shape=endState;perimeter=ellipsePerimeter",
    "shape=rhombus;perimeter=rhombusPerimeter",
    "rounded=0;fillColor=#000000",
    "shape=umlLifeline;perimeter=lifelinePerimeter",
    "rounded=0;fillColor=none",
    "shape=singleArrow",
};

struct Participant {
    Shape icon;
    std::string_view name;
};

/// The signs that a lifeline may begin with in place of a box.
constexpr auto participants = std::to_array<Participant>({{Shape::actor, "umlActor"},
                                                          {Shape::boundary, "umlBoundary"},
                                                          {Shape::control, "umlControl"},
                                                          {Shape::entity, "umlEntity"}});

/// The marks at the ends of lines. By the number of the mark.
constexpr std::array<std::string_view, 6> marks{
    "=none",
    "=open;{}Size=10",
    "=block;{}Size=9;{}Fill=1",
    "=block;{}Size=13;{}Fill=0",
    "=diamondThin;{}Size=18;{}Fill=0",
    "=diamondThin;{}Size=18;{}Fill=1",
};

std::string markStyle(std::string_view end, Mark mark) {
    std::string style = ";" + std::string(end) + "Arrow";
    for (const char letter : marks[static_cast<std::size_t>(mark)]) {
        if (letter == '{') {
            style += end;
        } else if (letter != '}') {
            style += letter;
        }
    }
    return style;
}

std::string number(double value) {
    return decimal(value * scale, decimals);
}

std::string idOf(int item) {
    return "v" + std::to_string(item);
}

/// Writes the cells of one page. An id is "v" and the number of the item; of what belongs to it, with a further number.
class Page {
public:
    Page(const Scene& scene, Theme theme, text::BufferedOutput& output)
        : scene_(scene), theme_(theme), output_(output) {}

    void write() {
        for (std::size_t index = 0; index < scene_.items.size(); ++index) {
            const Item& item = scene_.items[index];
            const auto id = static_cast<int>(index);
            if (item.hasBox) {
                box(id, item);
            } else if (item.kind == "AssociationViewNew") {
                association(id, item);
            } else if (item.kind != "RoleView" || !isOfPair(item.parent)) {
                edge(id, item, wayOf(item), item.client, item.supplier);
            }
        }
    }

private:
    void attribute(std::string_view name, std::string_view value) {
        output_.put(" ");
        output_.put(name);
        output_.put(R"(=")");
        output_.put(markup(value));
        output_.put(R"(")");
    }

    void geometry(const Rectangle& box) {
        output_.put("<mxGeometry");
        attribute("x", number(box.x));
        attribute("y", number(box.y));
        attribute("width", decimal(std::max(box.width * scale, smallest), decimals));
        attribute("height", decimal(std::max(box.height * scale, smallest), decimals));
        output_.put(" as=\"geometry\"/></mxCell>\n");
    }

    void vertex(const std::string& id, const std::string& parent, const std::string& style, std::string_view text,
                const Rectangle& box) {
        output_.put("<mxCell");
        attribute("id", id);
        attribute("value", text);
        attribute("style", style);
        attribute("parent", parent);
        output_.put(R"( vertex="1">)");
        geometry(box);
    }

    [[nodiscard]] std::string colours(const Item& item) const {
        const Colours colours(item, theme_);
        std::string style = ";strokeColor=" + colourText(colours.line);
        style += shapes[static_cast<std::size_t>(item.shape)].find("fillColor") == std::string_view::npos
                     ? ";fillColor=" + colourText(colours.fill)
                     : "";
        return style + (item.isDashed || item.isMissing ? ";dashed=1" : "");
    }

    void box(int id, const Item& item) {
        std::string style = std::string(shapes[static_cast<std::size_t>(item.shape)]) + colours(item);
        if (item.shape == Shape::lifeline) {
            style += ";size=" + number(item.head);
            const auto* participant = std::ranges::find(participants, item.icon, &Participant::icon);
            style += participant != participants.end() ? std::string(";participant=").append(participant->name) : "";
        }
        vertex(idOf(id), "1", style + ";html=0;collapsible=0", "", item.box);
        int part = 0;
        const auto partId = [&] { return idOf(id) + "-" + std::to_string(part++); };
        const auto within = [&](Rectangle inner) {
            inner.x -= item.box.x;
            inner.y -= item.box.y;
            return inner;
        };
        for (const double height : item.separators) {
            vertex(partId(), idOf(id), "line;strokeWidth=1" + colours(item), "",
                   within({item.box.x, height - 3, item.box.width, 6}));
        }
        for (const Rectangle& bar : item.bars) {
            vertex(partId(), idOf(id), std::string(item.areBarsDashed ? "dashed=1;" : "") + "fillColor=#ffffff", "",
                   within(bar));
        }
        for (const Text& text : item.texts) {
            vertex(partId(), idOf(id), textStyle(text), text.text, within(text.room()));
        }
    }

    [[nodiscard]] std::string textStyle(const Text& text) const {
        constexpr std::array<std::string_view, 3> anchors{"left", "center", "right"};
        const Font& font = text.font;
        const int flags =
            (font.isBold ? 1 : 0) + (font.isItalic ? 2 : 0) + (font.isUnderlined ? 4 : 0) + (font.isStruck ? 8 : 0);
        std::string style = "text;html=0;strokeColor=none;fillColor=none;spacing=0;verticalAlign=middle;align=";
        style += anchors[static_cast<std::size_t>(text.anchor)];
        style += ";fontSize=" + number(font.size) + ";fontStyle=" + std::to_string(flags);
        style += ";fontColor=" + colourText(theme_ == Theme::plain ? black : font.colour);
        return style.append(";fontFamily=").append(isFace(font.face) ? font.face : "Arial");
    }

    /// Whether the association's roles are drawn as one line.
    [[nodiscard]] bool isOfPair(int association) const {
        const auto first = static_cast<std::size_t>(association) + 1;
        const auto isRole = [&](std::size_t index) {
            return index < scene_.items.size() && scene_.items[index].parent == association;
        };
        return association != noItem && isRole(first) && isRole(first + 1) && !isRole(first + 2);
    }

    /// Where the line goes; one to a tree goes on along the tree.
    [[nodiscard]] std::vector<Point> wayOf(const Item& item) const {
        std::vector<Point> way = item.route;
        if (item.tree != noItem && !way.empty()) {
            const std::vector<Point>& rest = scene_.items[static_cast<std::size_t>(item.tree)].route;
            constexpr std::size_t longest = 16; // each of many lines repeats it
            if (!rest.empty() && rest.size() <= longest) {
                way.insert(way.end(), rest.begin() + (distance(rest.front(), way.back()) < 1 ? 1 : 0), rest.end());
            }
        }
        return way;
    }

    void association(int id, const Item& item) {
        if (!isOfPair(id)) {
            // a point that the lines of the roles meet at
            const Rectangle point = scene_.items.size() > static_cast<std::size_t>(id) + 1 &&
                                            scene_.items[static_cast<std::size_t>(id) + 1].parent == id
                                        ? around(scene_.items[static_cast<std::size_t>(id) + 1].route.front(), 3, 3)
                                        : around({}, 3, 3);
            vertex(idOf(id), "1", "shape=ellipse;fillColor=none;strokeColor=none", "", point);
            labels(id, item, "1", {point.x, point.y});
            return;
        }
        const Item& first = scene_.items[static_cast<std::size_t>(id) + 1];
        const Item& second = scene_.items[static_cast<std::size_t>(id) + 2];
        std::vector<Point> route(first.route.rbegin(), first.route.rend());
        for (const Point& point : second.route) {
            if (distance(route.back(), point) > 0.5) {
                route.push_back(point);
            }
        }
        Item line = item;
        line.startMark = first.endMark;
        line.endMark = second.endMark;
        line.bars = first.bars;
        line.bars.insert(line.bars.end(), second.bars.begin(), second.bars.end());
        for (const Item* role : {&first, &second}) {
            line.texts.insert(line.texts.end(), role->texts.begin(), role->texts.end());
        }
        edge(id, line, route, first.supplier, second.supplier);
    }

    /// Where at a box a line ends, in parts of its size.
    void end(const std::string& name, const Point& point, int item, std::string& style) const {
        if (item == noItem || !scene_.items[static_cast<std::size_t>(item)].hasBox) {
            return;
        }
        const Rectangle& box = scene_.items[static_cast<std::size_t>(item)].box;
        const auto part = [](double at, double from, double size) {
            return decimal(size > 0 ? std::clamp((at - from) / size, 0.0, 1.0) : 0.5, decimals);
        };
        style += ";" + name + "X=" + part(point.x, box.x, box.width) + ";" + name +
                 "Y=" + part(point.y, box.y, box.height) + ";" + name + "Perimeter=0";
    }

    void edge(int id, const Item& item, const std::vector<Point>& route, int client, int supplier) {
        if (route.size() < 2) {
            return;
        }
        const Colours colours(item, theme_);
        std::string style = "edgeStyle=none;rounded=0;html=0;strokeColor=" + colourText(colours.line);
        style += item.isDashed || item.isMissing ? ";dashed=1" : "";
        style += markStyle("start", item.startMark) + markStyle("end", item.endMark);
        end("exit", route.front(), client, style);
        end("entry", route.back(), supplier, style);
        output_.put("<mxCell");
        attribute("id", idOf(id));
        attribute("style", style);
        output_.put(R"( parent="1" edge="1")");
        const auto join = [&](std::string_view name, int other) {
            if (other != noItem && other != id && hasCell(other)) {
                attribute(name, idOf(cellOf(other)));
            }
        };
        join("source", client);
        join("target", supplier);
        output_.put(R"(><mxGeometry relative="1" as="geometry">)");
        point(route.front(), "sourcePoint");
        point(route.back(), "targetPoint");
        if (route.size() > 2) {
            output_.put(R"(<Array as="points">)");
            for (std::size_t index = 1; index + 1 < route.size(); ++index) {
                point(route[index], "");
            }
            output_.put("</Array>");
        }
        output_.put("</mxGeometry></mxCell>\n");
        labels(id, item, idOf(id), middleOf(route));
    }

    /// Lines that are drawn have a cell; a role that is part of its association's has that one.
    [[nodiscard]] bool hasCell(int item) const {
        const Item& other = scene_.items[static_cast<std::size_t>(cellOf(item))];
        return other.hasBox || other.kind == "AssociationViewNew" || other.route.size() >= 2;
    }
    [[nodiscard]] int cellOf(int item) const {
        const Item& other = scene_.items[static_cast<std::size_t>(item)];
        return other.kind == "RoleView" && isOfPair(other.parent) ? other.parent : item;
    }

    void point(const Point& point, std::string_view as) {
        output_.put("<mxPoint");
        attribute("x", number(point.x));
        attribute("y", number(point.y));
        if (!as.empty()) {
            attribute("as", as);
        }
        output_.put("/>");
    }

    /// The texts of a line, which move with it: each is so far from its middle.
    void labels(int id, const Item& item, const std::string& parent, const Point& middle) {
        int part = 0;
        for (const Rectangle& bar : item.bars) {
            vertex(idOf(id) + "-" + std::to_string(part++), "1", "fillColor=#ffffff", "", bar);
        }
        for (const Text& text : item.texts) {
            const Rectangle room = text.room();
            const std::string own = idOf(id) + "-" + std::to_string(part++);
            const bool isInBar =
                std::ranges::any_of(item.bars, [&](const Rectangle& bar) { return bar.contains(room.centre(), 0); });
            if (parent == "1" || isInBar) {
                vertex(own, "1", textStyle(text), text.text, room);
                continue;
            }
            output_.put("<mxCell");
            attribute("id", own);
            attribute("value", text.text);
            attribute("style", textStyle(text) + ";resizable=0");
            attribute("parent", parent);
            output_.put(R"( vertex="1" connectable="0"><mxGeometry relative="1")");
            attribute("width", decimal(std::max(room.width * scale, smallest), decimals));
            attribute("height", decimal(std::max(room.height * scale, smallest), decimals));
            output_.put(R"( as="geometry">)");
            point({room.x - middle.x, room.y - middle.y}, "offset");
            output_.put("</mxGeometry></mxCell>\n");
        }
    }

    const Scene& scene_;
    Theme theme_;
    text::BufferedOutput& output_;
};

} // namespace

DrawioWriter::DrawioWriter(Theme theme, text::BufferedOutput& output) : theme_(theme), output_(output) {
    output_.put("<mxfile host=\"petal\">\n");
}

void DrawioWriter::write(const Scene& scene) {
    output_.put(R"(<diagram id="d)" + std::to_string(pages_++) + R"(" name=")" + markup(scene.name) +
                "\"><mxGraphModel grid=\"0\" page=\"0\" math=\"0\"><root>\n"
                "<mxCell id=\"0\"/><mxCell id=\"1\" parent=\"0\"/>\n");
    Page(scene, theme_, output_).write();
    output_.put("</root></mxGraphModel></diagram>\n");
}

void DrawioWriter::end() {
    output_.put("</mxfile>\n");
}

} // namespace layout
