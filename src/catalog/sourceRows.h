#pragma once

#include "catalog/elementRows.h"

#include <string>
#include <vector>

namespace catalog {

/// What the import made of something in the files.
struct OutcomeAt {
    std::uint32_t file = 0;
    std::uint64_t offset = 0;
    const ledger::Reason* reason = nullptr;
};

/// What the rows of objects of the files need of the model's other rows.
struct SourceLinks {
    const std::vector<OutcomeAt>& outcomes; ///< of all objects and properties, in the order of the files' text
    const std::vector<std::string>& files;  ///< as outputs name them; empty for the model's own
    const ElementPlaces& elements;
};

/// Writes the objects and properties of the files. Throws as `writeModelRows`.
void writeSourceRows(const ImportedParts& parts, const SourceLinks& links, RowWriter& rows);

} // namespace catalog
