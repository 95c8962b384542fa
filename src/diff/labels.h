#pragma once

#include "diff/Model.h"

#include <string>

namespace diff {

/// The name of an element with its type, arguments or ends, as people tell it from others. It may be empty.
[[nodiscard]] std::string labelOf(const Model& model, ElementId id);

/// The qualified name of an element or, for one without a name, its owner's with its kind and label.
[[nodiscard]] std::string describedName(const Model& model, ElementId id);

} // namespace diff
