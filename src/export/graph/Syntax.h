#pragma once

#include "export/graph/labels.h"
#include "export/graph/pictures.h"
#include "text/Output.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace exporter::graph {

/// The symbol of a tip in each syntax, at the first and at the second end of an edge.
struct TipSymbols {
    Tip tip;
    std::string_view first;
    std::string_view second;
    std::string_view shape; ///< of DOT
};
[[nodiscard]] const TipSymbols& symbolsOf(Tip tip);
/// "<|--": an edge as PlantUML and Mermaid write it.
[[nodiscard]] std::string arrowOf(const Edge& edge);
/// The name of an edge's relationship.
[[nodiscard]] std::string_view nameOf(const Edge& edge);

/// One of the three syntaxes, for one picture. Every function appends to `into`.
class Syntax {
public:
    virtual ~Syntax() = default;
    virtual void startCluster(const Cluster& cluster, std::size_t level, std::string& into) = 0;
    virtual void endCluster(std::size_t level, std::string& into) = 0;
    virtual void addBox(const Box& box, std::size_t level, std::string& into) = 0;
    /// The parts of the box that must be outside of all clusters.
    virtual void addBeside(const Box& /*box*/, std::string& /*into*/) {}
    virtual void addEdge(const Edge& edge, std::string& into) = 0;
};

/// Whether clusters contain each other, or each one only its own classes.
enum class Nesting : std::uint8_t { nested, flat };

/// Writes the clusters with their boxes, then what is beside these, then edges.
void writeContent(const Graph& graph, const Picture& picture, Nesting nesting, Syntax& syntax,
                  text::BufferedOutput& output);

/// "12 classes, 3 associations, 1 generalization": the numbers of a picture.
[[nodiscard]] std::string countsOf(const Picture& picture);

/// Adds to the omissions what of the model no picture of any syntax shows, and notes that none of `pictures` has.
void countOmissions(const KelModel& model, std::span<const Picture> pictures, Omissions& omissions);
/// "Left out: 2 operations (reason).": a line for each omission.
[[nodiscard]] std::vector<std::string> linesOf(const Omissions& omissions);

inline constexpr std::string_view indentation = "  ";
[[nodiscard]] std::string indent(std::size_t level);

} // namespace exporter::graph
