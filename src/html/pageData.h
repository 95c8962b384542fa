#pragma once

#include "text/Output.h"

namespace exporter {
struct ExportContext;
}

namespace html {

/// Writes what a page needs besides the JSON document of its model, as one JSON object:
///
/// - `file`: the name of the model's file;
/// - `ids`: the element ids in the order of the document's numbers: a number of elements whose id is "q" and their
///   quid, then an id that is not, and so on;
/// - `kinds`: by word the numbers of the classes that their stereotype or category makes something else than classes;
/// - `means`: pairs of a type and the class that its name means, by their numbers;
/// - `ledger`: totals, kinds and the entries that an `EntryKeeper` keeps, those that share a reason refer to it by its
///   index; left out when it is not known.
///
/// Numbers the objects of the model (`KelNumbering`). Throws what the output throws.
void writePageData(const exporter::ExportContext& context, text::BufferedOutput& output);

} // namespace html
