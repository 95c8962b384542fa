#include "layout/viewKinds.h"

#include <algorithm>
#include <array>
#include <string>

namespace layout {

namespace {

constexpr bool solid = false;
constexpr bool dashed = true;
constexpr bool shows = true;
constexpr bool showsNothing = false;

/// In the order of the names.
constexpr auto viewKinds = std::to_array<ViewKind>({
    {"ActivityStateView", Shape::rounded, Contents::label, 300, 110},
    {"AssocAttachView", Shape::line, Contents::none, 0, 0, dashed, Mark::none, showsNothing},
    {"AssociationViewNew", Shape::line},
    {"AttachView", Shape::line, Contents::none, 0, 0, dashed, Mark::none, showsNothing},
    {"CategoryView", Shape::package, Contents::label, 300, 180},
    {"ClassView", Shape::rectangle, Contents::members, 220, 110},
    {"ConnectionView", Shape::line},
    {"DataFlowView", Shape::line, Contents::none, 0, 0, solid, Mark::arrow, shows},
    {"DecisionView", Shape::decision, Contents::beside, 150, 110},
    {"DependencyView", Shape::line, Contents::none, 0, 0, dashed, Mark::arrow, shows},
    {"DeviceView", Shape::cube, Contents::label, 350, 280},
    {"ImportView", Shape::line, Contents::none, 0, 0, dashed, Mark::arrow, shows},
    {"InheritTreeView", Shape::line, Contents::none, 0, 0, solid, Mark::triangle, showsNothing},
    {"InheritView", Shape::line, Contents::none, 0, 0, solid, Mark::triangle, shows},
    {"InstantiateView", Shape::line, Contents::none, 0, 0, dashed, Mark::arrow, shows},
    {"InterMessView", Shape::line, Contents::none, 0, 0, solid, Mark::arrow, shows},
    {"InterObjView", Shape::lifeline, Contents::none, 300, 1000},
    {"Label", Shape::none, Contents::none, 0, 0, solid, Mark::none, showsNothing},
    {"LinkSelfView", Shape::line},
    {"LinkView", Shape::line},
    {"MessView", Shape::arrowhead, Contents::beside, 120, 20},
    {"MetaClassView", Shape::rectangle, Contents::members, 220, 110},
    {"ModView", Shape::component, Contents::label, 340, 180},
    {"ModVisView", Shape::line, Contents::none, 0, 0, dashed, Mark::arrow, shows},
    {"NoteView", Shape::note, Contents::note, 300, 130, solid, Mark::none, showsNothing},
    {"ObjView", Shape::rectangle, Contents::label, 300, 180},
    {"ObjectFlowView", Shape::line, Contents::none, 0, 0, dashed, Mark::arrow, shows},
    {"ObjectView", Shape::rectangle, Contents::label, 300, 180},
    {"ProcessorView", Shape::shadedCube, Contents::label, 475, 380},
    {"RealizeView", Shape::line, Contents::none, 0, 0, dashed, Mark::triangle, shows},
    {"RoleView", Shape::line},
    {"SelfLinkView", Shape::line},
    {"SelfMessView", Shape::line, Contents::none, 0, 0, solid, Mark::arrow, shows},
    {"SelfTransView", Shape::line, Contents::none, 0, 0, solid, Mark::arrow, shows},
    {"StateView", Shape::rounded, Contents::label, 220, 110},
    {"SubSysView", Shape::package, Contents::label, 300, 180},
    {"Swimlane", Shape::swimlane, Contents::none, 450, 0},
    {"SynchronizationView", Shape::bar, Contents::beside, 300, 16},
    {"TransView", Shape::line, Contents::none, 0, 0, solid, Mark::arrow, shows},
    {"UseCaseView", Shape::oval, Contents::label, 213, 118},
    {"UsesView", Shape::line, Contents::none, 0, 0, dashed, Mark::arrow, shows},
});
static_assert(std::ranges::is_sorted(viewKinds, {}, &ViewKind::kind));

constexpr auto icons = std::to_array<Icon>({
    {"actor", Shape::actor, 120, 162},
    {"boundary", Shape::boundary, 229, 164},
    {"business actor", Shape::actor, 120, 162},
    {"control", Shape::control, 157, 153},
    {"entity", Shape::entity, 154, 153},
    {"interface", Shape::circle, 90, 90},
});

constexpr auto stateKinds = std::to_array<StateKind>({
    {"EndState", Shape::endState, 84, 84, Contents::beside},
    {"StartState", Shape::startState, 60, 60, Contents::beside},
});

std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return result;
}

} // namespace

const ViewKind* findViewKind(std::string_view kind) {
    const auto* found = std::ranges::lower_bound(viewKinds, kind, {}, &ViewKind::kind);
    return found != viewKinds.end() && found->kind == kind ? found : nullptr;
}

const Icon* findIcon(std::string_view name) {
    const std::string wanted = lower(name.substr(0, 64));
    const auto* found = std::ranges::find(icons, wanted, &Icon::name);
    return found != icons.end() ? found : nullptr;
}

const StateKind* findStateKind(std::string_view name) {
    const auto* found = std::ranges::find(stateKinds, name, &StateKind::name);
    return found != stateKinds.end() ? found : nullptr;
}

} // namespace layout
