#include "loading/part.h"

#include "catalog/sqlite/openSqlite.h"

const void* petalPart(const char* version) {
    static constexpr catalog::DatabasePart part{.open = catalog::openSqlite};
    return loading::partFor(version, &part);
}
