#pragma once

#include "export/options.h"

#include <array>

namespace exporter {

struct ExportContext;

inline constexpr std::array jsonOptions{
    Option{"places", "true|false", "false", "with each object the quid, file and line that it comes from"},
};

/// Writes a model as a JSON document, format "petal-model", version 1: one file, which holds all of the model.
///
/// The document is UTF-8. A text that is not valid UTF-8 has U+FFFD for each invalid sequence, and the document then
/// says "lossy". Throws what the output throws. The document is written while it is made; it numbers the objects of the
/// model (`KelNumbering`), so only one thread may write a model at a time.
void writeJson(const ExportContext& context);

} // namespace exporter
