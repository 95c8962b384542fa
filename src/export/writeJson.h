#pragma once

#include "export/options.h"

#include <array>

namespace exporter {

struct ExportContext;

inline constexpr std::array jsonOptions{
    Option{"places", "true|false", "false", "with each object the quid, file and line that it comes from"},
};

/// Writes a model as a JSON document, format "petal-model", version 1.
///
/// The document is UTF-8 and written as it is made: besides a number for each object nothing of it is held in memory.
/// A text that is not valid UTF-8 has U+FFFD for each invalid sequence, and the document then says "lossy". Throws
/// what the output throws.
void writeJson(const ExportContext& context);

} // namespace exporter
