#include "builder/indexes/AggregateRoles.h"

#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/links/KelPointerHash.h"

#include <tsl/robin_map.h>
#include <vector>

namespace rose::AggregateRoles {

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

void forget(const KelAssociationRole& deleted) noexcept {
    const auto own = markedRoles.find(deleted.getAssociation());
    if (own != markedRoles.end()) {
        std::erase(own.value(), &deleted);
    }
}

void forget(const KelAssociation& deleted) noexcept {
    markedRoles.erase(&deleted);
}

void clear() noexcept {
    markedRoles.clear();
}

} // namespace rose::AggregateRoles
