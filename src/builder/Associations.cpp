#include "builder/Associations.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/links/KelPointerHash.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

namespace rose {

namespace AggregateRoles {

namespace {

using Roles = std::vector<KelAssociationRole*>;

tsl::robin_map<const KelAssociation*, Roles, KelPointerHash> markedRoles;

} // namespace

void mark(KelAssociationRole& role, const KelAssociation& association) {
    Roles& own = markedRoles[role.getAssociation()];
    if (!role.isAggregate) {
        own.push_back(&role);
        role.isAggregate = true;
    }
    Roles& marked = markedRoles[&association];
    for (KelAssociationRole* other : marked) {
        other->isAggregate = other == &role;
    }
    std::erase_if(marked, [](const KelAssociationRole* other) { return !other->isAggregate; });
}

void forget(const KelAssociation& deleted) noexcept {
    markedRoles.erase(&deleted);
}

void clear() noexcept {
    decltype(markedRoles)().swap(markedRoles); // clear() would keep the memory
}

} // namespace AggregateRoles

namespace {

struct MultiplicityRow {
    std::string_view cardinality;
    const char* multiplicity;
};

constexpr auto multiplicities = std::to_array<MultiplicityRow>({
    {"0..n", "0..*"},
    {"1..n", "1..*"},
    {"1..1", "1"},
    {"0..0", "0"},
});

const char* multiplicityOf(const char* cardinality) {
    const auto* row = std::find_if(multiplicities.begin(), multiplicities.end(),
                                   [cardinality](const auto& at) { return at.cardinality == cardinality; });
    return row != multiplicities.end() ? row->multiplicity : cardinality;
}

/// One end of an association that replaces a part of an association with an association class.
struct End {
    KelClass* associatedClass;
    KelString multiplicity;
};

void addRole(KelAssociation& association, const End& end) {
    auto made = std::make_unique<KelAssociationRole>();
    made->multiplicity = end.multiplicity;
    KelAssociationRole* role =
        attach(std::move(made), [&](KelAssociationRole* added) { return association.addAssociationRole(added); });
    role->addAssociatedClass(end.associatedClass);
}

/// For the observer: the name was only the mark for having none.
void reportClearedName(KelModelObject& object, std::string_view name) {
    if (!name.empty() && isUnnamed(name)) {
        trace::repaired(object, KelImportReason::nameCleared);
    }
}

/// Puts an association named after the classes at its ends into the current package.
void createAssociationBetween(const End& first, const End& second) {
    auto made = std::make_unique<KelAssociation>();
    made->setName(first.associatedClass->getName() + "_" + second.associatedClass->getName());
    addRole(*made, first);
    addRole(*made, second);
    attach(std::move(made), [](KelAssociation* association) { return place(*state.aPackage, *association); });
}

} // namespace

void CreateAssociation(char* name) {
    state.clearRelationships();
    auto made = std::make_unique<KelAssociation>();
    if (!isUnnamed(name)) {
        made->setName(name);
    }
    state.aAssociation = attach(std::move(made), [name](KelAssociation* association) {
        const bool placed = place(*state.aPackage, *association);
        if (!placed) {
            report(QEV_RRSE::ROS_I_ASSOCIATION_NOT_IN_PACKAGE, name);
        }
        return placed;
    });
    state.InNoteView = false;
    state.activeObject = state.aAssociation;
    state.aClass = nullptr;
    state.candKey = nullptr;
    state.forKey = nullptr;
    reportClearedName(*state.aAssociation, name);
}

void CreateAssociationRole(char* name) {
    if (state.aAssociation == nullptr) {
        trace::refused(KelImportReason::noAssociation);
        return;
    }
    auto made = std::make_unique<KelAssociationRole>();
    if (!isUnnamed(name)) {
        made->setName(name);
    }
    state.aAssociationRole =
        attach(std::move(made), [](KelAssociationRole* role) { return state.aAssociation->addAssociationRole(role); });
    state.aAssociationRole->isNavigable = false;
    reportClearedName(*state.aAssociationRole, name);
    state.activeObject = state.aAssociationRole;
}

void SetCardinality(char* text) {
    if (state.activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    const char* multiplicity = multiplicityOf(text);
    if (state.aAssociation != nullptr && state.aAssociationRole != nullptr) {
        state.aAssociationRole->multiplicity = multiplicity;
        trace::changed(*state.aAssociationRole);
    } else if (state.aAssociation == nullptr && state.aClass != nullptr) {
        state.aClass->multiplicity = multiplicity;
        trace::changed(*state.aClass);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

void CreateAssociationClass(char* name) {
    const KelAssociationRole* first =
        state.aAssociation != nullptr ? state.aAssociation->associationRoles()[0] : nullptr;
    const KelAssociationRole* second =
        state.aAssociation != nullptr ? state.aAssociation->associationRoles()[1] : nullptr;
    if (first == nullptr || second == nullptr || first->getAssociatedClass() == nullptr ||
        second->getAssociatedClass() == nullptr) {
        trace::refused(state.aAssociation == nullptr           ? KelImportReason::noAssociation
                       : first == nullptr || second == nullptr ? KelImportReason::tooFewEnds
                                                               : KelImportReason::endWithoutClass,
                       state.aAssociation);
        return;
    }
    state.keepOperation = nullptr;
    const char* simpleName = stripDoubleColon(name);
    report(QEV_RRSE::ROS_I_CREATING_ASSOCIATION, simpleName);
    KelClass* associationClass = findAClass(simpleName, 0);
    if (associationClass == nullptr) {
        associationClass = createWaitingClass(simpleName);
    }
    createAssociationBetween({first->getAssociatedClass(), "1"}, {associationClass, second->multiplicity});
    createAssociationBetween({associationClass, first->multiplicity}, {second->getAssociatedClass(), "1"});
    trace::changed(*state.aAssociation, associationClass);
}

} // namespace rose
