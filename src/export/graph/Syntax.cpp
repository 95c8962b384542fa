#include "export/graph/Syntax.h"

#include "export/Omissions.h"
#include "export/asItsClass.h"
#include "export/modelWalk.h"

#include <algorithm>
#include <array>

namespace exporter::graph {

namespace {

constexpr std::array tipSymbols{
    TipSymbols{Tip::none, "", "", "none"},
    TipSymbols{Tip::arrow, "<", ">", "vee"},
    TipSymbols{Tip::triangle, "<|", "|>", "onormal"},
    TipSymbols{Tip::diamond, "o", "o", "odiamond"},
    TipSymbols{Tip::filledDiamond, "*", "*", "diamond"},
};

/// Writes boxes and opens the clusters around them. Boxes come in the order of the graph, so each cluster opens once.
class ClusterStack {
public:
    ClusterStack(const Graph& graph, Nesting nesting, Syntax& syntax)
        : clusters_(graph.getClusters()), nesting_(nesting), syntax_(syntax) {}

    /// Makes `cluster` the innermost open one.
    void enter(std::uint32_t cluster, std::string& into) {
        std::vector<std::uint32_t> path; // the innermost first
        for (std::uint32_t at = cluster; at != Cluster::none; at = clusters_[at].around) {
            path.push_back(at);
            if (nesting_ == Nesting::flat) {
                break;
            }
        }
        std::ranges::reverse(path);
        const auto [open, wanted] = std::ranges::mismatch(open_, path);
        leaveUntil(static_cast<std::size_t>(open - open_.begin()), into);
        for (auto at = wanted; at != path.end(); ++at) {
            syntax_.startCluster(clusters_[*at], open_.size(), into);
            open_.push_back(*at);
        }
    }
    void leaveUntil(std::size_t level, std::string& into) {
        while (open_.size() > level) {
            open_.pop_back();
            syntax_.endCluster(open_.size(), into);
        }
    }
    [[nodiscard]] std::size_t level() const { return open_.size(); }

private:
    std::span<const Cluster> clusters_;
    Nesting nesting_;
    Syntax& syntax_;
    std::vector<std::uint32_t> open_; // the innermost last
};

} // namespace

const TipSymbols& symbolsOf(Tip tip) {
    return *std::ranges::find(tipSymbols, tip, &TipSymbols::tip);
}

std::string arrowOf(const Edge& edge) {
    return std::string(symbolsOf(edge.firstTip).first)
        .append(edge.isDashed ? ".." : "--")
        .append(symbolsOf(edge.secondTip).second);
}

std::string_view nameOf(const Edge& edge) {
    return edge.said->getName().view();
}

void writeContent(const Graph& graph, const Picture& picture, Nesting nesting, Syntax& syntax,
                  text::BufferedOutput& output) {
    std::string piece;
    const auto put = [&] {
        output.put(piece);
        piece.clear();
    };
    ClusterStack stack(graph, nesting, syntax);
    for (const Box& box : picture.boxes) {
        stack.enter(graph.clusterOf(box.one), piece);
        syntax.addBox(box, stack.level(), piece);
        put();
    }
    stack.leaveUntil(0, piece);
    for (const Box& box : picture.boxes) {
        syntax.addBeside(box, piece);
        put();
    }
    for (const Edge* edge : picture.edges) {
        syntax.addEdge(*edge, piece);
        put();
    }
    put();
}

std::string countsOf(const Picture& picture) {
    struct Kind {
        KelElementType type;
        std::string_view one;
        std::string_view many;
    };
    constexpr std::array kinds{
        Kind{KelElementType::association, "association", "associations"},
        Kind{KelElementType::generalization, "generalization", "generalizations"},
        Kind{KelElementType::realization, "realization", "realizations"},
        Kind{KelElementType::dependency, "dependency", "dependencies"},
    };
    const auto counted = [](std::size_t count, std::string_view one, std::string_view many) {
        return std::to_string(count).append(" ").append(count == 1 ? one : many);
    };
    const auto bare = static_cast<std::size_t>(std::ranges::count(picture.boxes, true, &Box::isBare));
    std::string text = counted(picture.boxes.size() - bare, "class", "classes");
    if (bare > 0) {
        text += ", " + counted(bare, "bare class of elsewhere", "bare classes of elsewhere");
    }
    for (const Kind& kind : kinds) {
        const auto count = static_cast<std::size_t>(std::ranges::count_if(
            picture.edges, [&](const Edge* edge) { return edge->said->elementType == kind.type; }));
        text += count > 0 ? ", " + counted(count, kind.one, kind.many) : "";
    }
    return text;
}

std::vector<std::string> linesOf(const Omissions& omissions) {
    std::vector<std::string> lines;
    for (const auto& [omission, count] : omissions.getCounts()) {
        lines.push_back("Left out: " + std::to_string(count));
        lines.back().append(" ").append(count == 1 ? omission.one : omission.many).append(": ").append(omission.why);
    }
    return lines;
}

std::string indent(std::size_t level) {
    return std::string(level * indentation.size(), ' ');
}

} // namespace exporter::graph
