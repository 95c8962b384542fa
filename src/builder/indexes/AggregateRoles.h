#pragma once

class KelAssociation;
class KelAssociationRole;

/// The roles marked as aggregates, by association, so that marking another one does not walk all roles. A role joins
/// its association when it is made and never moves, and nothing else marks roles.
namespace rose::AggregateRoles {

/// Marks the role, and takes the mark from every other role of the association, which need not be the role's own.
void mark(KelAssociationRole& role, const KelAssociation& association);
void forget(const KelAssociationRole& deleted) noexcept;
void forget(const KelAssociation& deleted) noexcept;
void clear() noexcept;

} // namespace rose::AggregateRoles
