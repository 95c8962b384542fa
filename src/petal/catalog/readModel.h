#pragma once

#include "catalog/modelRows.h"
#include "petal/import/importModel.h"

#include <optional>

namespace petal {

/// How a model of a catalogue is read.
struct CatalogReading {
    catalog::SourceDetail source = catalog::SourceDetail::objects;
    std::string version; ///< of petal
    std::string options; ///< in words, for comparisons with what the catalogue has
};

/// Size, time and hash of a file. Throws `std::system_error`.
[[nodiscard]] catalog::FileFacts factsOf(const std::string& file);

/// The time of a file's last change as the catalogue has it; empty if there is no file.
[[nodiscard]] std::string modifiedTime(const std::string& file);

/// The path of a unit of the model `file` on the disk.
[[nodiscard]] std::string unitFile(const catalog::KnownUnit& unit, const std::string& file);

/// Whether the files of a model are, by size and time, those that the catalogue knows. `file` is the model's.
[[nodiscard]] bool looksUnchanged(const catalog::KnownModel& known, const std::string& file);

/// Imports a model and writes its rows to a descriptor; writes nothing if the content of all its files is what `known`,
/// which may be null, says. The model's path in the catalogue is `path`. Replaces what an earlier
/// reading of the model wrote there. Throws a `Failure`.
[[nodiscard]] ImportResult readModel(const ImportRequest& request, const ImportContext& context,
                                     const CatalogReading& reading, const std::string& path,
                                     const catalog::KnownModel* known, int descriptor);

} // namespace petal
