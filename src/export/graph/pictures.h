#pragma once

#include "export/graph/Graph.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

class KelElement;

namespace exporter {
struct ExportContext;
struct Option;
class Omissions;
} // namespace exporter

namespace exporter::graph {

/// A class on a picture.
struct Box {
    std::uint32_t one;   ///< index of the class
    bool isBare = false; ///< without members and notes, as it is there for an edge only
};

/// The content of one drawing.
struct Picture {
    std::string name;                    ///< of the model, the package or the diagram; UTF-8
    std::string qualifiedName;           ///< empty for the whole model
    std::string part;                    ///< such as "part 1 of 3"; empty for a whole picture
    const KelElement* notesOf = nullptr; ///< whose notes are on the picture by themselves; null for none
    std::vector<Box> boxes;              ///< each class once, in the order of the graph
    std::vector<const Edge*> edges;      ///< of a generalization each pair once
};

/// The pictures that the options `scope`, `diagram` and `package` ask for; at least one. `usualScope` is the scope
/// without the option. Adds to the omissions what is on none of them, unless some are picked. Throws `WrongOption` when
/// a name matches nothing. Takes time and memory proportional to the model.
[[nodiscard]] std::vector<Picture> picturesOf(const Graph& graph, const ExportContext& context,
                                              std::string_view usualScope);

} // namespace exporter::graph
