#pragma once

namespace exporter {
struct ExportContext;
}

namespace html {

/// Writes a model as a page for a browser: one file that needs no other, and no network. It holds the model's JSON
/// document with places, the element ids, the ledger, an outline for readers without script, and the scripts and the
/// style of src/html/page, which a policy in the page allows by their hashes and nothing else.
///
/// Throws what the output throws. One thread may write a model at a time (`KelNumbering`).
void writeHtml(const exporter::ExportContext& context);

} // namespace html
