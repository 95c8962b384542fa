#pragma once

#include "export/sql/Schema.h"

class KelModel;

namespace text {
class BufferedOutput;
}

namespace exporter {
class Omissions;
class OptionValues;
} // namespace exporter

namespace exporter::sql {

struct Dialect;

/// The content of the comment at the head of a script, besides the decisions of the schema.
struct ScriptHead {
    const KelModel& model;
    const OptionValues& options;
    const Omissions& omissions;
};

/// Writes the script that creates the schema in a dialect. Takes time proportional to the schema. Throws what the
/// output throws.
void writeScript(const Schema& schema, const Dialect& dialect, const ScriptHead& head, text::BufferedOutput& output);

/// The comment on a table or a column: descriptions, notes and qualified names of what it comes from. Empty for a
/// column that no element of the model asks for.
[[nodiscard]] std::string commentOn(const Table& table);
[[nodiscard]] std::string commentOn(const Column& column);

} // namespace exporter::sql
