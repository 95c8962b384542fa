#pragma once

namespace exporter {

struct ExportContext;

/// Writes a model as an outline for people to read: a line for each object, those inside it below, indented.
///
/// The outline is UTF-8. Whatever the model's texts hold, they drive no terminal: see `printableText`. Throws what
/// the output throws.
void writeTree(const ExportContext& context);

} // namespace exporter
