#include "ledger/kindTable.h"

#include "ledger/reasons.h"

#include <array>
#include <tsl/robin_map.h>

namespace ledger {

namespace {

using enum Subject;
using enum Gate;

constexpr Reason as(const char* what) {
    return {Outcome::imported, Weight::bulk, what};
}

constexpr Reason no(const char* why) {
    return {Outcome::dropped, Weight::listed, why};
}

constexpr const char* useCases = "use cases are not imported";
constexpr const char* states = "state machines and activities are not imported";
constexpr const char* interactions = "interactions are not imported";
constexpr const char* components = "components are not imported";
constexpr const char* deployment = "processes and devices are not imported";
constexpr const char* tools = "properties of tools are not imported";
constexpr const char* drawing = "layout is not imported";

constexpr auto rows = std::to_array<KindRow>({
    {"Petal", header, as("as the model's origin")},
    {"Design", design, as("as the model")},
    {"Class_Category", package, as("as a package"), unmutes},
    {"Class", classObject, as("as a class"), unmutes},
    {"Parameterized_Class", classObject, as("as a class"), unmutes},
    {"Instantiated_Class", classObject, as("as a class"), unmutes},
    {"Class_Utility", classObject, as("as a class"), unmutes},
    {"Parameterized_Class_Utility", classObject, as("as a class"), unmutes},
    {"Instantiated_Class_Utility", classObject, as("as a class"), unmutes},
    {"Metaclass", classObject, as("as a class"), unmutes},
    {"ClassAttribute", attribute, as("as an attribute")},
    {"Operation", operation, as("as an operation")},
    {"Parameter", parameter, as("as an argument")},
    {"Semantic_Info", operationText, as("as a text of the operation")},
    {"Association", association, as("as an association"), unmutes},
    {"Role", role, as("as a role")},
    {"Inheritance_Relationship", generalization, as("as a generalization")},
    {"Realize_Relationship", realization, as("as a realization")},
    {"Uses_Relationship", dependency, as("as a dependency")},
    {"ClassDiagram", classDiagram, as("as a class diagram"), unmutes},
    {"ClassView", classView, as("as an element of the diagram")},
    {"AssociationViewNew", associationView, as("as an element of the diagram")},
    {"InheritView", generalizationView, as("as an element of the diagram")},
    {"RealizeView", realizationView, as("as an element of the diagram")},
    {"UsesView", dependencyView, as("as an element of the diagram")},
    {"InheritTreeView", treeView, no(drawing)},
    {"NoteView", noteView, as("as a note")},
    {"AttachView", attachView, as("as the place of a note")},
    {"ItemLabel", label, no(drawing)},
    {"Label", diagramLabel, as("as the description of the diagram")},

    {"UseCase", none, no(useCases)},
    {"UseCaseDiagram", none, no(useCases)},
    {"UseCaseView", none, no(useCases)},
    {"State_Machine", none, no(states), mutes},
    {"State_Diagram", none, no(states), mutes},
    {"ActivityDiagram", none, no(states)},
    {"State", none, no(states)},
    {"StateView", none, no(states)},
    {"State_Transition", none, no(states)},
    {"TransView", none, no(states)},
    {"ActivityState", none, no(states)},
    {"ActivityStateView", none, no(states)},
    {"Decision", none, no(states)},
    {"DecisionView", none, no(states)},
    {"SynchronizationState", none, no(states)},
    {"SynchronizationView", none, no(states)},
    {"Partition", none, no(states)},
    {"Swimlane", none, no(states)},
    {"Event", none, no(states)},
    {"sendEvent", none, no(states)},
    {"action", none, no(states)},
    {"ObjectFlowView", none, no(states)},
    {"Mechanism", none, no(interactions), mutes},
    {"InteractionDiagram", none, no(interactions)},
    {"ObjectDiagram", none, no(interactions)},
    {"Object", none, no(interactions)},
    {"ObjectView", none, no(interactions)},
    {"ObjectViewNew", none, no(interactions)},
    {"Link", none, no(interactions)},
    {"LinkView", none, no(interactions)},
    {"LinkSelfView", none, no(interactions)},
    {"Message", none, no(interactions)},
    {"MessView", none, no(interactions)},
    {"InterObjView", none, no(interactions)},
    {"InterMessView", none, no(interactions)},
    {"SelfMessView", none, no(interactions)},
    {"Focus_Of_Control", none, no(interactions)},
    {"DataFlowView", none, no(interactions)},
    {"SubSystem", none, no(components), mutes},
    {"SubSysView", none, no(components)},
    {"module", none, no(components)},
    {"Module", none, no(components)},
    {"ModView", none, no(components)},
    {"ModuleView", none, no(components)},
    {"Module_Diagram", none, no(components)},
    {"Module_Visibility_Relationship", none, no(components)},
    {"ModVisView", none, no(components)},
    {"Processes", none, no(deployment)},
    {"Process_Diagram", none, no(deployment)},
    {"Process", none, no(deployment)},
    {"Processor", none, no(deployment)},
    {"ProcessorView", none, no(deployment)},
    {"Device", none, no(deployment)},
    {"DeviceView", none, no(deployment)},
    {"Connection_Relationship", none, no(deployment)},
    {"ConnectionView", none, no(deployment)},
    {"Properties", none, no(tools)},
    {"Attribute", none, no(tools)},
    {"defaults", none, no("settings of the tool are not part of the model")},
    {"external_doc", none, no("links to documents are not imported")},
    {"Visibility_Relationship", none, no("dependencies between packages are not imported")},
    {"ImportView", none, no("dependencies between packages are not imported")},
    {"CategoryView", none, no("packages on diagrams are not imported")},
    {"Has_Relationship", none, no("has relationships are not imported")},
    {"Instantiation_Relationship", none, no("instantiations are not imported")},
    {"InstantiateView", none, no("instantiations are not imported")},
    {"AssocConstraintView", none, no(drawing)},
    {"AssocAttachView", none, no(drawing)},
    {"RoleView", none, no(drawing)},
    {"SegLabel", none, no(drawing)},
    {"Compartment", none, no(drawing)},
    {"Font", none, no(drawing)},
});

constexpr KindRow unknown{"", none, reasons::unknownKind};

} // namespace

std::span<const KindRow> kindRows() {
    return rows;
}

const KindRow& kindRow(std::string_view kind) {
    static const auto byKind = [] {
        tsl::robin_map<std::string_view, const KindRow*> map;
        for (const KindRow& row : rows) {
            map.emplace(row.kind, &row);
        }
        return map;
    }();
    const auto found = byKind.find(kind);
    return found != byKind.end() ? *found->second : unknown;
}

} // namespace ledger
