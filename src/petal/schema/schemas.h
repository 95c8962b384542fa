#pragma once

#include "text/Embedded.h"

namespace petal {

/// The JSON Schemas of all JSON that petal writes, by name. Of a form with a document on each line it is the schema of
/// a line. They live as long as the program.
[[nodiscard]] std::span<const text::Embedded> schemas();

} // namespace petal
