#pragma once

#include "catalog/Database.h"
#include "petal/Failure.h"

#include <memory>
#include <string>
#include <string_view>

namespace petal {

/// Whether the name of a catalogue is that of a database of a PostgreSQL server, by libpq's rules for connection
/// strings, and not of a file: "postgresql://..." or "WORD=...". A file of such a name has "./" before it.
[[nodiscard]] bool isServer(std::string_view name);

/// Opens a catalogue in the database that its name means, whose part is loaded for it. Throws a `Failure`, and
/// `loading::NotLoaded`.
[[nodiscard]] std::unique_ptr<catalog::Database> openDatabase(const std::string& name, catalog::Access access);

/// Calls `step`, and throws its `catalog::DatabaseFailure` as a `Failure` with that outcome.
template <class Step>
auto withDatabase(Outcome outcome, Step step) {
    try {
        return step();
    } catch (const catalog::DatabaseFailure& failure) {
        throw Failure(outcome, failure.what(), failure.getAdvice());
    }
}

} // namespace petal
