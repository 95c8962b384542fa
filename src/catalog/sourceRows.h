#pragma once

#include "catalog/modelRows.h"

#include <functional>
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
    /// The local number of the element that was made from the object there; 0 if there is none.
    std::function<std::uint32_t(std::uint32_t file, std::uint64_t offset)> elementAt;
};

/// Writes the objects and properties of the files. Throws as `writeModelRows`.
void writeSourceRows(const ImportedParts& parts, const SourceLinks& links, RowWriter& rows);

} // namespace catalog
