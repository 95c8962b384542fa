#include "petal/commands.h"
#include "petal/output/Descriptor.h"
#include "petal/schema/schemas.h"

#include <algorithm>

namespace petal {

void printSchema(const SchemaRequest& request) {
    writeToStandardOutput(std::ranges::find(schemas(), request.name, &text::Embedded::name)->text);
}

} // namespace petal
