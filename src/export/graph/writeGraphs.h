#pragma once

#include "export/ClassKind.h"
#include "export/options.h"

#include <array>

namespace exporter {

struct ExportContext;

namespace graph {
inline constexpr Option scope{"scope", "model|packages|diagrams", "",
                              "one picture of the model, one for each package or one for each class diagram (default: "
                              "diagrams if some are picked, else model)"};
inline constexpr Option markdownScope{
    "scope", "model|packages|diagrams", "",
    "one picture of the model, one for each package or one for each class diagram (default: diagrams in Markdown or if "
    "some are picked, else model)"};
inline constexpr Option diagram{"diagram",     "NAME", "", "only class diagrams of this simple or qualified name",
                                Accepts::text, true};
inline constexpr Option package{
    "package", "NAME", "", "only packages of this simple or qualified name, and those in them", Accepts::text, true};
inline constexpr Option members{"members", "all|public|none", "all", "which members the classes show"};
inline constexpr Option operations{"operations", "true|false", "true", "classes show their operations"};
inline constexpr Option direction{"direction", "TB|BT|LR|RL", "TB",
                                  "where edges lead: from top to bottom, from left to right ..."};
inline constexpr Option twoDirections{"direction", "TB|LR", "TB",
                                      "where edges lead: from top to bottom or from left to right"};
inline constexpr Option mostClasses{"max-classes", "N", "100",
                                    "a picture in Markdown with more classes is split into parts", Accepts::number};
} // namespace graph

inline constexpr std::array plantUmlOptions{graph::scope,      graph::diagram,       graph::package,    graph::members,
                                            graph::operations, graph::twoDirections, ClassKinds::option};
inline constexpr std::array mermaidOptions{graph::markdownScope, graph::diagram,    graph::package,
                                           graph::members,       graph::operations, graph::direction,
                                           graph::mostClasses,   ClassKinds::option};
inline constexpr std::array dotOptions{graph::scope,      graph::diagram,   graph::package,    graph::members,
                                       graph::operations, graph::direction, ClassKinds::option};

/// Class diagrams for PlantUML 1.2020.2 and newer: a block for each picture.
///
/// This and the other two are the `write` of a row of the table of formats, and throw `WrongOption` besides what that
/// says.
void writePlantUml(const ExportContext& context);
/// Class diagrams for Mermaid 10.9 to 11.17: Markdown if the ending is ".md", else one picture.
void writeMermaid(const ExportContext& context);
/// Graphs for Graphviz: one for each picture.
void writeDot(const ExportContext& context);

} // namespace exporter
