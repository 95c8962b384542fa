#pragma once

#include "export/sql/Schema.h"

namespace text {
class BufferedOutput;
}

namespace exporter {
class ElementIds;
}

namespace exporter::sql {

/// Writes which element became which table and column, and why it is called so, as CSV with a head line. A column of a
/// reference or a join table is the association's. Throws what the output throws.
void writeNameMap(const Schema& schema, const ElementIds& ids, text::BufferedOutput& output);

} // namespace exporter::sql
