#include "petal/catalog/openDatabase.h"

#include "loading/part.h"

namespace petal {

namespace {

/// The database that the name of a catalogue means.
const catalog::DatabasePart& databaseOf(const std::string& /*name*/) {
    return *static_cast<const catalog::DatabasePart*>(loading::loadPart("sqlite"));
}

} // namespace

std::unique_ptr<catalog::Database> openDatabase(const std::string& name, catalog::Access access) {
    const Outcome outcome = access == catalog::Access::read ? Outcome::inputNotRead : Outcome::outputFailed;
    return withDatabase(outcome, [&] { return databaseOf(name).open(name, access, loading::version); });
}

} // namespace petal
