#include "ledger/propertyTable.h"

#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelOperation.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>
#include <span>

namespace ledger {

namespace {

using enum Subject;
using enum Taking;
using namespace reasons;

std::string wordOf(std::span<const char* const> words, std::int32_t code) {
    const auto index = static_cast<std::size_t>(code);
    return code >= 0 && index < words.size() ? words[index] : std::to_string(code);
}

template <class Kind>
const Kind* as(const KelObject& object, KelElementType type) {
    return object.elementType == type ? static_cast<const Kind*>(&object) : nullptr;
}

std::string visibilityOf(const KelObject& object) {
    static constexpr std::array words{"public", "protected", "private", "implementation"};
    if (const auto* attribute = as<KelAttribute>(object, KelElementType::attribute)) {
        return wordOf(words, attribute->visibility);
    }
    const auto* operation = as<KelOperation>(object, KelElementType::operation);
    const auto* generalization = as<KelGeneralization>(object, KelElementType::generalization);
    return operation != nullptr        ? wordOf(words, operation->visibility)
           : generalization != nullptr ? wordOf(words, generalization->visibility)
                                       : std::string();
}

std::string containmentOf(const KelObject& object) {
    static constexpr std::array words{"by value", "by reference", "unspecified"};
    const auto* attribute = as<KelAttribute>(object, KelElementType::attribute);
    const auto* role = as<KelAssociationRole>(object, KelElementType::associationRole);
    return attribute != nullptr ? wordOf(words, attribute->containment)
           : role != nullptr    ? wordOf(words, role->containment)
                                : std::string();
}

std::string concurrencyOf(const KelObject& object) {
    static constexpr std::array words{"sequential", "guarded"};
    const auto* operation = as<KelOperation>(object, KelElementType::operation);
    const auto code = static_cast<std::size_t>(operation != nullptr ? operation->concurrency : -1);
    return code < words.size() ? words[code] : "neither sequential nor guarded";
}

std::string persistenceOf(const KelObject&) {
    return "persistent";
}

std::string spaceOf(const KelObject& object) {
    const auto* owner = as<KelClass>(object, KelElementType::classObject);
    return owner != nullptr ? std::to_string(owner->space) : std::string();
}

constexpr Reason bulkOf(const char* why) {
    return {Outcome::dropped, Weight::bulk, why};
}

constexpr Reason behaviour{Outcome::dropped, Weight::listed, "state machines and activities are not imported"};
constexpr Reason otherPackages{Outcome::dropped, Weight::bulk, "dependencies between packages are not imported"};

constexpr auto rows = std::to_array<PropertyRow>({
    {none, "quid", always, identifier},
    {none, "quidu", always, identifier},
    {none, "uid", always, identifier},
    {none, "attributes", always, toolProperties},
    {none, "is_unit", always, storage},
    {none, "is_loaded", always, storage},
    {none, "file_name", always, storage},
    {none, "documentation", taken, kept},

    {header, "charSet", always, kept},
    {header, "version", always, bulkOf("the version of the notation is not kept")},
    {header, "_written", always, bulkOf("the name of the writing tool is not kept")},
    {design, "root_category", always, kept},
    {design, "root_usecase_package", always, bulkOf("only the logical view is imported")},
    {design, "root_subsystem", always, bulkOf("components are not imported")},
    {design, "process_structure", always, bulkOf("processes and devices are not imported")},
    {design, "properties", always, toolProperties},
    {design, "documentation", always, noPlace},

    {package, "stereotype", taken, kept},
    {package, "logical_models", always, kept},
    {package, "logical_presentations", always, kept},
    {package, "visible_categories", always, otherPackages},
    {package, "statemachine", always, behaviour},

    {classObject, "stereotype", taken, kept},
    {classObject, "abstract", taken, kept},
    {classObject, "persistence", taken, kept, persistenceOf},
    {classObject, "space", taken, kept, spaceOf},
    {classObject, "cardinality", taken, kept},
    {classObject, "class_attributes", always, kept},
    {classObject, "operations", always, kept},
    {classObject, "parameters", always, kept},
    {classObject, "superclasses", always, kept},
    {classObject, "used_nodes", always, kept},
    {classObject, "realized_interfaces", always, kept},
    {classObject, "nestedClasses", always, kept},
    {classObject, "statemachine", always, behaviour},

    {attribute, "type", taken, kept},
    {attribute, "initv", taken, kept},
    {attribute, "exportControl", taken, kept, visibilityOf},
    {attribute, "Containment", taken, kept, containmentOf, "Unspecified"},
    {attribute, "static", taken, kept},
    {attribute, "derived", taken, kept},

    {operation, "result", taken, kept},
    {operation, "opExportControl", taken, kept, visibilityOf},
    {operation, "concurrency", taken, kept, concurrencyOf, "Sequential"},
    {operation, "static", taken, kept},
    {operation, "virtual", taken, kept},
    {operation, "friend", taken, kept},
    {operation, "parameters", always, kept},
    {operation, "pre_condition", always, kept},
    {operation, "post_condition", always, kept},
    {operation, "semantics", always, kept},
    {operationText, "PDL", taken, kept},
    {parameter, "type", taken, kept},
    {parameter, "initv", taken, kept},

    {association, "roles", always, kept},
    {association, "AssociationClass", taken, associationClass},
    {role, "supplier", taken, kept},
    {role, "client_cardinality", taken, kept},
    {role, "Containment", taken, kept, containmentOf, "Unspecified"},
    {role, "is_navigable", taken, kept},
    {role, "is_aggregate", taken, kept},
    {role, "static", taken, kept},
    {role, "friend", taken, kept},
    {role, "label", name, noPlace},
    {role, "keys", always, kept},

    {generalization, "supplier", taken, kept},
    {generalization, "label", taken, kept},
    {generalization, "exportControl", taken, kept, visibilityOf},
    {generalization, "virtual", taken, kept},
    {generalization, "friend", taken, kept},
    {realization, "supplier", taken, kept},
    {dependency, "supplier", taken, kept},
    {dependency, "label", taken, kept},

    {classDiagram, "items", always, kept},
    {classDiagram, "title", always, bulkOf("the model has the diagram's name instead of a title")},
    {noteView, "label", taken, kept},
    {label, "label", taken, kept},
    {diagramLabel, "label", taken, kept},
    {attachView, "client", always, kept},
    {attachView, "supplier", always, kept},
    {generalizationView, "client", always, kept},
    {generalizationView, "supplier", always, kept},
    {realizationView, "client", always, kept},
    {realizationView, "supplier", always, kept},
    {dependencyView, "client", always, kept},
    {dependencyView, "supplier", always, kept},
});

constexpr bool isDrawn(Subject subject) {
    return subject >= classDiagram;
}

} // namespace

const PropertyRow* propertyRow(Subject subject, std::string_view property) {
    const auto find = [property](Subject wanted) {
        return std::ranges::find_if(
            rows, [&](const PropertyRow& row) { return row.subject == wanted && row.property == property; });
    };
    auto found = find(subject);
    if (found == rows.end()) {
        found = find(none);
    }
    const bool isView = isDrawn(subject) && subject != classDiagram; // a view has no documentation in the model
    return found != rows.end() && !(isView && found->subject == none && found->taking == taken) ? found : nullptr;
}

const Reason& otherProperties(Subject subject) {
    return isDrawn(subject) ? layout : subject == design ? toolSettings : noPlace;
}

} // namespace ledger
