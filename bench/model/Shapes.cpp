#include "model/Shapes.h"

#include "model/shapes/shapeFunctions.h"

#include <algorithm>
#include <array>

namespace bench {

namespace {

using enum Layout;

constexpr std::array table{
    Shape{"plain", "as real models are", asUsual, plain},
    Shape{"packages-flat", "one package with all classes", asUsual, packagesFlat},
    Shape{"packages-nested", "packages three deep, a class in each", asUsual, packagesNested},
    Shape{"attributes", "one class with all attributes", asUsual, attributesOfOneClass},
    Shape{"diagrams", "one package with all diagrams", asUsual, diagrams},
    Shape{"views", "one diagram with all classes and generalizations", asUsual, viewsOfOneDiagram},
    Shape{"associations", "associations drawn on ten diagrams each", asUsual, associationsOnTenDiagrams},
    Shape{"forward", "every class referred to before any is written", asUsual, forwardReferences},
    Shape{"keys", "every key's attribute in two keys", asUsual, attributesInTwoKeys},
    Shape{"types", "every attribute of a type of its own", asUsual, distinctTypes},
    Shape{"dense", "as many keywords as the bytes can hold", tight, denseText},
    Shape{"sparse", "long documentation and little else", asUsual, sparseText},
    Shape{"texts", "one class with all documentation", asUsual, textsOfOneClass},
};

} // namespace

std::span<const Shape> shapes() noexcept {
    return table;
}

const Shape* findShape(std::string_view name) noexcept {
    const auto* found = std::ranges::find(table, name, &Shape::name);
    return found != table.end() ? found : nullptr;
}

} // namespace bench
