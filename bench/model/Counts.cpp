#include "model/Counts.h"

#include <ostream>

namespace bench {

namespace {

using enum Counted;
using enum Shown;

// clang-format off
constexpr std::array<CountedThing, countedKinds> table{{
    {packages,               asObjectIn,     "packages",           "packages"},
    {classes,                asKind,         "class",              "classes"},
    {attributes,             asObjectIn,     "attributes",         "attributes"},
    {operations,             asObjectIn,     "operations",         "operations"},
    {arguments,              asObjectIn,     "arguments",          "arguments"},
    {associations,           asKind,         "association",        "associations"},
    {roles,                  asObjectIn,     "roles",              "roles"},
    {generalizations,        asKind,         "generalization",     "generalizations"},
    {realizations,           asKind,         "realization",        "realizations"},
    {dependencies,           asKind,         "dependency",         "dependencies"},
    {candidateKeys,          asKind,         "candidate",          "candidate keys"},
    {foreignKeys,            asKind,         "foreign",            "foreign keys"},
    {roleNameMaps,           asObjectIn,     "roleNameMaps",       "role name maps"},
    {diagrams,               asObjectIn,     "diagrams",           "diagrams"},
    {declaredTypes,          asKind,         "derived",            "declared types"},
    {typeValues,             asObjectIn,     "values",             "type values"},
    {drawnElements,          asIdIn,         "elements",           "drawn elements"},
    {subtypes,               asIdIn,         "subtypes",           "subtypes"},
    {supertypes,             asIdIn,         "supertypes",         "supertypes"},
    {keyAttributes,          asIdIn,         "attributes",         "key attributes"},
    {rolesForeignKeys,       asIdIn,         "foreignKeys",        "roles' foreign keys"},
    {types,                  asId,           "type",               "types of features"},
    {returnTypes,            asId,           "returnType",         "return types"},
    {roleClasses,            asId,           "class",              "classes of roles"},
    {realizationClasses,     asId,           "realizationClass",   "realization classes"},
    {specificationClasses,   asId,           "specificationClass", "specification classes"},
    {clients,                asId,           "client",             "clients"},
    {suppliers,              asId,           "supplier",           "suppliers"},
    {notes,                  asTextIn,       "notes",              "notes"},
    {noteCharacters,         asCharactersOf, "notes",              "characters of notes"},
    {descriptionCharacters,  asCharactersOf, "description",        "characters of descriptions"},
    {initialValueCharacters, asCharactersOf, "initialValue",       "characters of initial values"},
}};
// clang-format on

} // namespace

const std::array<CountedThing, countedKinds>& countedThings() noexcept {
    return table;
}

std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    const char* between = "{";
    for (const CountedThing& thing : table) {
        if (counts.of(thing.counted) != 0) {
            out << between << '"' << thing.label << "\": " << counts.of(thing.counted);
            between = ", ";
        }
    }
    return out << (*between == '{' ? "{}" : "}");
}

} // namespace bench
