#include "loading/part.h"

#include "catalog/postgresql/openPostgresql.h"

const void* petalPart(const char* version) {
    static constexpr catalog::DatabasePart part{.open = catalog::openPostgresql};
    return loading::partFor(version, &part);
}
