#pragma once

#include "text/Output.h"

namespace exporter {
class ElementIds;
struct ExportContext;
} // namespace exporter

namespace layout {
class NotationTree;
}

namespace html {

/// Writes what a page needs besides the JSON document of its model, as one JSON object:
///
/// - `files`: the name of the model's file, and the files of its units as the JSON document names them;
/// - `ids`: the element ids in the order of the document's numbers: a number of elements whose id is "q" and their
///   quid, then an id that is not, and so on;
/// - `kinds`: by word the numbers of the classes that their stereotype or category makes something else than classes;
/// - `means`: pairs of a type and the class that its name means, by their numbers;
/// - `pictures`: the diagrams of the files in the order of `writePictures`: kind, name, index of the file, and line;
/// - `ledger`: totals, kinds and the entries that an `EntryKeeper` keeps, those that share a reason refer to it by its
///   index; left out when it is not known.
///
/// An entry of a dropped object also has the object's documentation and quid.
///
/// Numbers the objects of the model (`KelNumbering`). Throws what the output throws.
void writePageData(const exporter::ExportContext& context, const exporter::ElementIds& ids, text::Output& output);

/// Writes what the index of several pages shows of this one as JSON without "<": `objects`, their number in the model;
/// `losses`, those of the ledger, left out when it is not known; `names`, a list of [element id, name, index of the
/// package around it or -1] for packages, whose id is empty, and classes. Throws what the output throws.
void writeSummary(const exporter::ExportContext& context, const exporter::ElementIds& ids,
                  text::BufferedOutput& output);

/// Writes the diagrams of the files, each as SVG in a block that browsers do not draw. Throws what the output throws.
void writePictures(const layout::NotationTree& notation, text::BufferedOutput& output);

} // namespace html
