#pragma once

#include "export/ClassKind.h"
#include "export/sql/Schema.h"
#include "export/sql/SchemaNames.h"
#include "export/sql/columnTypes.h"

#include <functional>
#include <string>

class KelModel;

namespace exporter {
class ElementIds;
class Omissions;
} // namespace exporter

namespace exporter::sql {

/// The choices of the user for a schema, by the words of the options.
struct SchemaChoices {
    std::string tables = "auto";
    std::string inheritance = "joined";
    std::string key = "natural";
    NameStyle names;
    TypeMap types;
    ClassKinds kinds;
};

/// Returns the ids of the model's elements, by number. The first call makes them, which takes long.
using FindIds = std::function<const ElementIds&()>;

/// The schema of a model. Adds what it has no place for to `omissions`.
///
/// The same model and choices give the same schema, and its names depend on the order of the element ids of what
/// clashes, so that a further class changes no other name. Where nothing clashes, no ids are asked for. Takes time and
/// memory proportional to the model and the schema, with n log n for sorting.
[[nodiscard]] Schema makeSchema(const KelModel& model, const SchemaChoices& choices, const FindIds& findIds,
                                Omissions& omissions);

} // namespace exporter::sql
