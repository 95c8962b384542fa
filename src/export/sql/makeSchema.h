#pragma once

#include "export/ClassKind.h"
#include "export/sql/Schema.h"
#include "export/sql/SchemaNames.h"
#include "export/sql/columnTypes.h"

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

/// The schema of a model. Adds what it has no place for to `omissions`.
///
/// The same model and choices give the same schema, and its names depend on the order of the element ids of what
/// clashes, so that a further class changes no other name. Takes time and memory proportional to the model and the
/// schema, with n log n for sorting.
[[nodiscard]] Schema makeSchema(const KelModel& model, const SchemaChoices& choices, const ElementIds& ids,
                                Omissions& omissions);

} // namespace exporter::sql
