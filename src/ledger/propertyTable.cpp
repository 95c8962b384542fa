#include "ledger/propertyTable.h"

#include "host/model/KelObject.h"
#include "ledger/checks.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>

namespace ledger {

namespace {

using enum Subject;
using namespace reasons;

constexpr Reason bulkOf(const char* why) {
    return {Outcome::dropped, Weight::bulk, why};
}

constexpr Reason behaviour{Outcome::dropped, Weight::listed, "state machines and activities are not imported"};
constexpr Reason otherPackages{Outcome::dropped, Weight::bulk, "dependencies between packages are not imported"};

constexpr auto rows = std::to_array<PropertyRow>({
    {none, "quid", nullptr, identifier},
    {none, "quidu", nullptr, identifier},
    {none, "uid", nullptr, identifier},
    {none, "attributes", nullptr, toolProperties},
    {none, "is_unit", nullptr, storage},
    {none, "is_loaded", nullptr, storage},
    {none, "file_name", nullptr, storage},
    {none, "documentation", checks::description, kept},

    {header, "charSet", nullptr, kept},
    {header, "version", nullptr, bulkOf("the version of the notation is not kept")},
    {header, "_written", nullptr, bulkOf("what wrote the file is not kept")},
    {design, "root_category", nullptr, kept},
    {design, "root_usecase_package", nullptr, bulkOf("only the logical view is imported")},
    {design, "root_subsystem", nullptr, bulkOf("components are not imported")},
    {design, "process_structure", nullptr, bulkOf("processes and devices are not imported")},
    {design, "properties", nullptr, toolProperties},
    {design, "documentation", nullptr, noPlace},

    {package, "stereotype", checks::stereotype, kept},
    {package, "logical_models", nullptr, kept},
    {package, "logical_presentations", nullptr, kept},
    {package, "visible_categories", nullptr, otherPackages},
    {package, "statemachine", nullptr, behaviour},

    {classObject, "stereotype", checks::stereotype, kept},
    {classObject, "abstract", checks::isAbstract, kept},
    {classObject, "persistence", checks::isPersistent, kept},
    {classObject, "space", checks::space, kept},
    {classObject, "cardinality", checks::multiplicity, kept},
    {classObject, "class_attributes", nullptr, kept},
    {classObject, "operations", nullptr, kept},
    {classObject, "parameters", nullptr, kept},
    {classObject, "superclasses", nullptr, kept},
    {classObject, "used_nodes", nullptr, kept},
    {classObject, "realized_interfaces", nullptr, kept},
    {classObject, "nestedClasses", nullptr, kept},
    {classObject, "statemachine", nullptr, behaviour},

    {attribute, "type", checks::type, kept},
    {attribute, "initv", checks::initialValue, kept},
    {attribute, "exportControl", checks::visibility, kept},
    {attribute, "Containment", checks::containment, kept},
    {attribute, "static", checks::isStatic, kept},
    {attribute, "derived", checks::isDerived, kept},

    {operation, "result", checks::type, kept},
    {operation, "opExportControl", checks::visibility, kept},
    {operation, "concurrency", checks::concurrency, kept},
    {operation, "static", checks::isStatic, kept},
    {operation, "virtual", checks::isVirtual, kept},
    {operation, "friend", checks::isFriend, kept},
    {operation, "parameters", nullptr, kept},
    {operation, "pre_condition", nullptr, kept},
    {operation, "post_condition", nullptr, kept},
    {operation, "semantics", nullptr, kept},
    {operationText, "PDL", checks::operationText, kept},
    {parameter, "type", checks::type, kept},
    {parameter, "initv", checks::initialValue, kept},

    {association, "roles", nullptr, kept},
    {association, "AssociationClass", checks::associationClass, kept},
    {role, "supplier", checks::supplier, kept},
    {role, "client_cardinality", checks::multiplicity, kept},
    {role, "Containment", checks::containment, kept},
    {role, "is_navigable", checks::isNavigable, kept},
    {role, "is_aggregate", checks::isAggregate, kept},
    {role, "static", checks::isStatic, kept},
    {role, "friend", checks::isFriend, kept},
    {role, "label", checks::roleLabel, kept},
    {role, "keys", nullptr, kept},

    {generalization, "supplier", checks::supplier, kept},
    {generalization, "label", checks::label, kept},
    {generalization, "exportControl", checks::visibility, kept},
    {generalization, "virtual", checks::isVirtual, kept},
    {generalization, "friend", checks::isFriend, kept},
    {realization, "supplier", checks::supplier, kept},
    {dependency, "supplier", checks::supplier, kept},
    {dependency, "label", checks::label, kept},

    {classDiagram, "items", nullptr, kept},
    {classDiagram, "title", nullptr, bulkOf("the diagram's name stands for its title")},
    {noteView, "label", checks::noteText, kept},
    {label, "label", checks::noteText, kept},
    {diagramLabel, "label", checks::description, kept},
    {attachView, "client", nullptr, kept},
    {attachView, "supplier", nullptr, kept},
    {generalizationView, "client", nullptr, kept},
    {generalizationView, "supplier", nullptr, kept},
    {realizationView, "client", nullptr, kept},
    {realizationView, "supplier", nullptr, kept},
    {dependencyView, "client", nullptr, kept},
    {dependencyView, "supplier", nullptr, kept},
});

constexpr bool isDrawn(Subject subject) {
    return subject >= classDiagram;
}

} // namespace

Reach propertyReach(std::string_view property) {
    struct Row {
        std::string_view property;
        Reach reach;
    };
    using enum Reach;
    static constexpr auto reaches = std::to_array<Row>({
        {"documentation", activeObject},
        {"label", activeObject},
        {"stereotype", activeObject},
        {"type", activeObject},
        {"initv", activeObject},
        {"exportControl", activeObject},
        {"Containment", activeObject},
        {"static", activeObject},
        {"derived", activeObject},
        {"virtual", activeObject},
        {"friend", activeObject},
        {"concurrency", activeObject},
        {"abstract", lastClass},
        {"persistence", lastClass},
        {"space", lastClass},
        {"result", lastOperation},
        {"opExportControl", lastOperation},
    });
    const auto* row = std::ranges::find(reaches, property, &Row::property);
    return row != reaches.end() ? row->reach : owner;
}

Subject subjectOf(const KelObject& object) {
    struct Row {
        KelElementType type;
        Subject subject;
    };
    static constexpr auto subjects = std::to_array<Row>({
        {KelElementType::designPackage, package},
        {KelElementType::classObject, classObject},
        {KelElementType::attribute, attribute},
        {KelElementType::operation, operation},
        {KelElementType::argument, parameter},
        {KelElementType::association, association},
        {KelElementType::associationRole, role},
        {KelElementType::generalization, generalization},
        {KelElementType::realization, realization},
        {KelElementType::dependency, dependency},
        {KelElementType::classDiagram, classDiagram},
    });
    const auto* row = std::ranges::find(subjects, object.elementType, &Row::type);
    return row != subjects.end() ? row->subject : none;
}

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
    return found != rows.end() && !(isView && found->subject == none && found->check != nullptr) ? found : nullptr;
}

const Reason& otherProperties(Subject subject) {
    return isDrawn(subject) ? layout : subject == design ? toolSettings : noPlace;
}

} // namespace ledger
