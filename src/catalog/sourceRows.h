#pragma once

#include "catalog/elementRows.h"
#include "source/SourceMap.h"

#include <memory>
#include <string>
#include <vector>

namespace catalog {

/// What the import made of something in the files.
struct OutcomeAt {
    std::uint32_t file = 0;
    std::uint64_t offset = 0;
    const ledger::Reason* reason = nullptr;
};

/// Writes the objects and properties of the files, the properties first. Its functions throw as `writeModelRows`. Takes
/// memory proportional to the objects.
class SourceRows {
public:
    /// `outcomes` are those of all objects and properties, in the order of the files' text. All references must live as
    /// long.
    SourceRows(const ImportedParts& parts, const std::vector<OutcomeAt>& outcomes, RowWriter& rows);
    SourceRows(const SourceRows&) = delete;
    SourceRows& operator=(const SourceRows&) = delete;
    ~SourceRows();

    /// Reads the files, and writes the rows of the properties. Returns the places of the model's objects, which the
    /// same reading gives. Called once.
    [[nodiscard]] source::SourceMap read();
    /// Writes the rows of the objects that were read. `files` are as outputs name them, empty for the model's own.
    void writeObjects(const std::vector<std::string>& files, const ElementPlaces& elements);

private:
    class Reading;
    std::unique_ptr<Reading> reading_;
};

} // namespace catalog
