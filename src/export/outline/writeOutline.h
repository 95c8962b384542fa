#pragma once

namespace exporter {

struct ExportContext;

/// Writes a model as an outline for people to read: one file with a line for each element, those in it below, indented.
///
/// An outline is an excerpt. It shows names, types, flags, ends, keys and notes; descriptions, semantics and conditions
/// of operations, concurrency and space count as omissions, which the outline itself does not list. The outline is
/// UTF-8, and a terminal only shows it, whatever the model's texts hold: see `printableText`. Throws what the output
/// throws.
void writeOutline(const ExportContext& context);

} // namespace exporter
