#pragma once

#include "text/Output.h"

#include <span>

namespace exporter {
struct ExportContext;
struct IndexedOutput;
} // namespace exporter

namespace html {

/// Writes a model as a page for a browser: one file that needs no other, and no network. It holds the model's JSON
/// document with places, the element ids, the ledger, an outline for readers without script, and the scripts and the
/// style of src/html/page, which a policy in the page allows by their hashes and nothing else.
///
/// Throws what the output throws. One thread may write a model at a time (`KelNumbering`).
void writeHtml(const exporter::ExportContext& context);

/// Writes the page of a folder: it lists the models with what became of them, links to their pages, and finds classes
/// by name in all of them. Reads the names and numbers from the pages; those of a page that cannot be read are left
/// out. Throws what the output throws.
void writeIndex(std::span<const exporter::IndexedOutput> models, text::Output& output);

} // namespace html
