#pragma once

#include "export/options.h"

#include <array>
#include <cstdint>

class KelModel;

namespace source {
class SourceMap;
}

namespace text {
class JsonTaker;
}

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

/// Whether a document says that it is "lossy"; for that, all texts are looked at before the first one is given.
enum class Lossy : std::uint8_t { told, untold };

/// Gives that document to `taker`, with the places unless they are null. Throws what the taker throws; likewise.
void giveDocument(const KelModel& model, const source::SourceMap* places, Lossy lossy, text::JsonTaker& taker);

} // namespace exporter
