#include "model/Shapes.h"

#include "model/shapes/shapeFunctions.h"

#include <algorithm>
#include <array>

namespace bench {

namespace {

using enum Layout;

constexpr double settingsOfReal = 1.0 / 3;

constexpr std::array table{
    Shape{"plain", "as real models are", "classes", asUsual, settingsOfReal, plain},
    Shape{"packages-flat", "one package with all classes", "classes", asUsual, 0, packagesFlat},
    Shape{"packages-nested", "packages three deep, a class in each", "packages", asUsual, 0, packagesNested},
    Shape{"attributes", "one class with all attributes", "attributes", asUsual, 0, attributesOfOneClass},
    Shape{"diagrams", "one package with all diagrams", "diagrams", asUsual, 0, diagrams},
    Shape{"views", "one diagram with all classes and generalizations", "views", asUsual, 0, viewsOfOneDiagram},
    Shape{"associations", "associations drawn on ten diagrams each, by bare views", "associations", asUsual, 0,
          associationsOnTenDiagrams},
    Shape{"forward", "every class referred to before any is written", "classes", asUsual, 0, forwardReferences},
    Shape{"keys", "every key's attribute in two keys", "attributes", asUsual, 0, attributesInTwoKeys},
    Shape{"types", "every attribute of a type of its own", "attributes", asUsual, 0, distinctTypes},
    Shape{"dense", "as many keywords as the bytes can hold", "classes", tight, 0, denseText},
    Shape{"sparse", "long documentation and little else", "classes", asUsual, 0, sparseText},
    Shape{"texts", "one class with all documentation", "texts", asUsual, 0, textsOfOneClass},
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
