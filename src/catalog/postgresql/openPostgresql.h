#pragma once

#include "catalog/Database.h"

namespace catalog {

/// Opens the catalogue in the database that `target`, a connection string of libpq, names, as `DatabasePart::open`. Its
/// tables are in the first schema of the search path.
[[nodiscard]] std::unique_ptr<Database> openPostgresql(const std::string& target, Access access,
                                                       const std::string& version);

} // namespace catalog
