#pragma once

#include "text/Output.h"

class KelModel;

namespace exporter {

/// Writes a model as an outline for people to read: a line for each object, those inside it below, indented.
///
/// The outline is UTF-8. Whatever the model's texts hold, they drive no terminal: see `printableText`. Throws what
/// the output throws.
class TreeWriter {
public:
    /// The output must outlive the writer.
    explicit TreeWriter(text::Output& output) : output_(output) {}

    void write(const KelModel& model);

private:
    text::Output& output_;
};

} // namespace exporter
