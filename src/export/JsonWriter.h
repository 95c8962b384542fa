#pragma once

#include "text/Output.h"

class KelModel;

namespace exporter {

/// Writes a model as a JSON document, format "petal-model", version 1.
///
/// The document is UTF-8 and written as it is made: beside a number for each object nothing of it is held in
/// memory. A text that is not valid UTF-8 has U+FFFD for each invalid sequence, and the document then says
/// "lossy". Throws what the output throws.
class JsonWriter {
public:
    /// The output must outlive the writer.
    explicit JsonWriter(text::Output& output) : output_(output) {}

    void write(const KelModel& model);

private:
    text::Output& output_;
};

} // namespace exporter
