#include "export/ClassKind.h"
#include "export/DrawnPositions.h"
#include "export/ElementIds.h"
#include "export/Exporter.h"
#include "export/Omissions.h"
#include "export/graph/Syntax.h"
#include "export/graph/writeGraphs.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelNote.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace exporter {

namespace {

using namespace graph;
using Replacement = text::Escapes::Replacement;

// In quotes entities count as in HTML, and in HTML backslashes count as in quotes.
constexpr std::array quotedReplacements{Replacement{'"', "\\\""}, Replacement{'\\', "\\\\"}, Replacement{'&', "&amp;"}};
constexpr std::array htmlReplacements{Replacement{'&', "&amp;"}, Replacement{'<', "&lt;"}, Replacement{'>', "&gt;"},
                                      Replacement{'"', "&quot;"}, Replacement{'\\', "\\\\"}};

constexpr LabelRules rulesWith(std::span<const Replacement> replacements) {
    const text::Escapes escapes{
        .replacements = replacements, .control = "\uFFFD", .unprintable = "\uFFFD", .invalidByte = nullptr};
    return {.escapes = escapes, .marks = {}, .inWordsOnly = {}, .markEscapes = escapes, .words = {}, .letterForm = ""};
}
constexpr LabelRules quotedRules = rulesWith(quotedReplacements);
constexpr LabelRules htmlRules = rulesWith(htmlReplacements);

struct KindColour {
    ClassKind kind;
    std::string_view colour;
};
constexpr std::array headColours{
    KindColour{ClassKind::interface, "#e3f1e3"}, KindColour{ClassKind::enumeration, "#f8ead6"},
    KindColour{ClassKind::datatype, "#ececec"},  KindColour{ClassKind::primitive, "#ececec"},
    KindColour{ClassKind::type, "#ececec"},      KindColour{ClassKind::classObject, "#e4ebf7"},
};

/// Graphviz then keeps positions, which are in points.
constexpr std::string_view placedLayout = "layout=neato, inputscale=72, splines=line";
constexpr double gap = 80; // points, between a class and its notes, and around what has no place

class Dot final : public Syntax {
public:
    /// `positions` are null when Graphviz is to find them.
    Dot(const Graph& graph, const ElementIds& ids, const Members& members, const DrawnPositions* positions)
        : graph_(graph), ids_(ids), members_(members), html_(htmlRules), quoted_(quotedRules),
          kinds_(members.getKinds()), positions_(positions) {}

    void start(const Picture& picture, std::string_view direction, std::string& into) {
        const std::string name = quoted_.name(picture.name);
        into += "digraph \"" + name + "\" {\n";
        place(picture);
        into += "  graph [" + (isPlaced() ? std::string(placedLayout) : "rankdir=" + std::string(direction));
        into += ", label=\"" + name +
                "\", labelloc=t, nodesep=0.4, ranksep=0.6, fontname=\"Helvetica\", fontsize=14]\n"
                "  node [shape=plain, fontname=\"Helvetica\", fontsize=10]\n"
                "  edge [fontname=\"Helvetica\", fontsize=9, arrowsize=0.8, labeldistance=1.8]\n";
        if (picture.notesOf != nullptr) {
            for (const KelNote* note : notesOf(*picture.notesOf)) {
                addNote(*note, 1, nextFree(), into);
            }
        }
    }

    void startCluster(const Cluster& cluster, std::size_t level, std::string& into) override {
        const KelDesignPackage& package = *cluster.package;
        into += indent(level + 1) + "subgraph \"cluster_p" + std::to_string(&cluster - graph_.getClusters().data()) +
                "\" {\n";
        into += indent(level + 2) + "graph [label=\"";
        into += package.stereotype.isEmpty() ? "" : "«" + quoted_.line(package.stereotype.view()) + "»\\n";
        into += quoted_.name(package.getName().view()) + "\", id=\"" + ids_.idOf(package) +
                "\", fontsize=11, color=\"#888888\"]\n";
    }
    void endCluster(std::size_t level, std::string& into) override { into += indent(level + 1) + "}\n"; }

    void addBox(const Box& box, std::size_t level, std::string& into) override {
        const KelClass& one = *graph_.getClasses()[box.one];
        into += indent(level + 1) + graph_.idOf(box.one) + " [id=\"" + ids_.idOf(one) + "\"";
        into += one.description.isEmpty() ? "" : ", tooltip=\"" + tooltip(one.description.view()) + "\"";
        const DrawnPositions::Box place = isPlaced() ? placeOf(one) : DrawnPositions::Box{};
        into += isPlaced() ? ", " + positionOf(place) : "";
        into += R"(, label=<<table border="0" cellborder="1" cellspacing="0" cellpadding="4" bgcolor="white")";
        into += isPlaced() ? sizeOf(place) : "";
        into += ">" + headOf(one) + (box.isBare ? "" : rowsOf(one)) + "</table>>]\n";
        DrawnPositions::Box notePlace{place.x + place.width / 2 + gap, place.y - place.height, 0, 0};
        for (const KelNote* note : box.isBare ? std::vector<const KelNote*>() : notesOf(one)) {
            notePlace.y += place.height / 2;
            const std::string id = addNote(*note, level + 1, notePlace, into);
            into += indent(level + 1) + graph_.idOf(box.one) + " -> " + id + " [style=dashed, arrowhead=none]\n";
        }
    }

    void addEdge(const Edge& edge, std::string& into) override {
        into += "  " + graph_.idOf(*edge.first) + " -> " + graph_.idOf(*edge.second) + " [dir=both, arrowtail=";
        into += symbolsOf(edge.firstTip).shape;
        into.append(", arrowhead=").append(symbolsOf(edge.secondTip).shape);
        into += edge.isDashed ? ", style=dashed" : "";
        attribute("taillabel", endOf(edge.firstRole, edge.secondRole, quoted_), into);
        attribute("headlabel", endOf(edge.secondRole, edge.firstRole, quoted_), into);
        attribute("label", quoted_.line(nameOf(edge)), into);
        into += "]\n";
    }

    [[nodiscard]] static std::string comment(const std::string& text) { return "  // " + text + "\n"; }

private:
    static void attribute(std::string_view name, const std::string& value, std::string& into) {
        if (!value.empty()) {
            into.append(", ").append(name).append("=\"") += value + "\"";
        }
    }

    [[nodiscard]] std::string tooltip(std::string_view text) const {
        std::string all;
        for (const std::string& line : quoted_.lines(text)) {
            all += (all.empty() ? "" : "\\n") + line;
        }
        return all;
    }

    [[nodiscard]] bool isPlaced() const { return diagram_ != nullptr; }

    /// Finds out which diagram the picture is of, and where the room below it begins.
    void place(const Picture& picture) {
        const bool isDiagram =
            picture.notesOf != nullptr && picture.notesOf->elementType == KelElementType::classDiagram;
        diagram_ = positions_ != nullptr && isDiagram ? static_cast<const KelClassDiagram*>(picture.notesOf) : nullptr;
        free_ = {};
        if (!isPlaced()) {
            return;
        }
        for (const Box& box : picture.boxes) {
            if (const auto* drawn = positions_->find(*diagram_, *graph_.getClasses()[box.one])) {
                free_.y = std::max(free_.y, drawn->y + drawn->height / 2 + gap);
            }
        }
    }

    /// A place below the diagram for what has none on it.
    DrawnPositions::Box nextFree() {
        free_.x += 2 * gap;
        return free_;
    }

    DrawnPositions::Box placeOf(const KelClass& one) {
        const DrawnPositions::Box* drawn = positions_->find(*diagram_, one);
        return drawn != nullptr ? *drawn : nextFree();
    }

    static std::string number(double value) {
        std::array<char, 32> digits{};
        std::snprintf(digits.data(), digits.size(), "%.1f", value);
        return digits.data();
    }
    /// Graphviz counts upwards.
    static std::string positionOf(const DrawnPositions::Box& box) {
        return "pos=\"" + number(box.x) + "," + number(-box.y) + "!\"";
    }
    /// The least size of a table.
    static std::string sizeOf(const DrawnPositions::Box& box) {
        static constexpr double largest = 65535;
        const auto points = [](double length) { return number(std::clamp(std::floor(length), 0.0, largest)); };
        const auto whole = [&](double length) { return points(length).substr(0, points(length).find('.')); };
        return " width=\"" + whole(box.width) + "\" height=\"" + whole(box.height) + "\"";
    }

    std::string addNote(const KelNote& note, std::size_t level, const DrawnPositions::Box& at, std::string& into) {
        std::string id = "n" + std::to_string(++noteCount_);
        into += indent(level) + id + " [" + (isPlaced() ? positionOf(at) + ", " : "");
        into += R"(shape=note, style=filled, fillcolor="#fffbe0", label=")";
        for (const std::string& line : quoted_.lines(note.description.view())) {
            into += line + "\\l";
        }
        into += "\"]\n";
        return id;
    }

    [[nodiscard]] std::string headOf(const KelClass& one) const {
        const ClassKind kind = kinds_.kindOf(one);
        std::string_view colour = "#e4ebf7";
        for (const KindColour& row : headColours) {
            colour = row.kind == kind ? row.colour : colour;
        }
        std::string head = "<tr><td bgcolor=\"" + std::string(colour) + "\">";
        for (const std::string_view word : keywordsOf(one)) {
            head += "«" + html_.line(word) + "»<br/>";
        }
        const std::string arguments = templateOf(one, html_);
        const std::string name =
            "<b>" + html_.name(one.getName().view()) + (arguments.empty() ? "" : "&lt;" + arguments + "&gt;") + "</b>";
        return head + (one.isAbstract ? "<i>" + name + "</i>" : name) + "</td></tr>";
    }

    [[nodiscard]] std::string rowsOf(const KelClass& one) const {
        const bool isEnumeration = kinds_.kindOf(one) == ClassKind::enumeration;
        std::string attributes;
        const auto add = [](const Row& row, std::string& into) {
            into += (row.isStatic ? "<u>" + row.text + "</u>" : row.text) + "<br align=\"left\"/>";
        };
        for (const KelAttribute* attribute : members_.attributesOf(one)) {
            add(rowOf(*attribute, isEnumeration, html_), attributes);
        }
        std::string operations;
        for (const KelOperation* operation : members_.operationsOf(one)) {
            add(rowOf(*operation, " : ", html_), operations);
        }
        std::string rows;
        for (const std::string& compartment : {attributes, operations}) {
            rows += compartment.empty() ? "" : R"(<tr><td align="left" balign="left">)" + compartment + "</td></tr>";
        }
        return rows;
    }

    const Graph& graph_;
    const ElementIds& ids_;
    const Members& members_;
    Labels html_;
    Labels quoted_;
    const ClassKinds& kinds_;
    const DrawnPositions* positions_;
    const KelClassDiagram* diagram_ = nullptr; // of the picture; null unless its classes have places
    DrawnPositions::Box free_{};
    std::size_t noteCount_ = 0;
};

} // namespace

void writeDot(const ExportContext& context) {
    const Graph graph(context.model, context.omissions);
    const DrawnPositions* positions = context.options.get("positions") == "source" ? context.positions : nullptr;
    const std::vector<Picture> pictures = picturesOf(graph, context, positions != nullptr ? "diagrams" : "model");
    countOmissions(context.model, pictures, context.omissions);
    const ElementIds ids(context.model, context.getSource(), ElementIds::Of::packagesAndClasses, ElementIds::Find::byNumber);
    const Members members(context.options);
    text::BufferedOutput output(context.folder.open(""));
    for (const Picture& picture : pictures) {
        Dot syntax(graph, ids, members, positions);
        std::string text;
        syntax.start(picture, context.options.get("direction"), text);
        output.put(text);
        writeContent(graph, picture, Nesting::nested, syntax, output);
        text = Dot::comment(countsOf(picture));
        if (&picture == &pictures.back()) {
            for (const std::string& line : linesOf(context.omissions)) {
                text += Dot::comment(line);
            }
        }
        output.put(text + "}\n");
    }
    output.flush();
}

} // namespace exporter
