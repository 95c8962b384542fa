#pragma once

#include "catalog/Database.h"
#include "ledger/makeLedger.h"

class KelModel;

namespace source {
class Trace;
}

namespace units {
struct UnitTree;
}

namespace catalog {

/// How much of the files as they stand is in the catalogue: nothing, objects with the properties that the model has no
/// place for, or all.
enum class SourceDetail : std::uint8_t { none, objects, all };

/// An import, from which rows are made. Owns nothing.
struct ImportedParts {
    const KelModel& model;
    const units::UnitTree& tree;
    const source::Trace& trace; ///< located
    ledger::Choices choices;    ///< of its ledger; the detail is chosen here
    SourceDetail source = SourceDetail::objects;
};

/// Writes the rows of an imported model; `known` describes its files. Numbers the objects of the model
/// (`KelNumbering`). Throws what the output of `rows` throws, `std::system_error` when a file cannot be read again, and
/// `std::bad_alloc`. Takes time and memory proportional to the files.
void writeModelRows(const ImportedParts& parts, const KnownModel& known, RowWriter& rows);

/// Writes the row of a model that failed.
void writeFailedRow(const KnownModel& known, RowWriter& rows);

/// The units of a model, without facts of their files: each file once, in the order of the files. Paths are relative to
/// the folder of the model.
[[nodiscard]] std::vector<KnownUnit> unitsOf(const units::UnitTree& tree);

} // namespace catalog
