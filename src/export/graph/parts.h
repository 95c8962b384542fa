#pragma once

#include "export/graph/Syntax.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace exporter::graph {

/// The characters of the text as browsers count them: those of UTF-16.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// The picture in parts: by package, and a package in several parts as far as one would have more classes with members,
/// or more characters in the syntax. Each full box and each edge of the picture is in one part; a class that an edge
/// needs besides is a bare box. A class that is too large by itself is a part nevertheless. Takes time and memory
/// proportional to the picture.
[[nodiscard]] std::vector<Picture> partsOf(const Graph& graph, const Picture& picture, Syntax& syntax,
                                           std::uint64_t mostClasses, std::size_t mostCharacters);

} // namespace exporter::graph
