#pragma once

#include "catalog/Database.h"

namespace catalog {

/// Opens the catalogue in the file of SQLite at `path`, as `DatabasePart::open`.
[[nodiscard]] std::unique_ptr<Database> openSqlite(const std::string& path, Access access, const std::string& version);

} // namespace catalog
