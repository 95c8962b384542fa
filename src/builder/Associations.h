#pragma once

#include <string_view>

class KelAssociation;
class KelAssociationRole;

namespace rose {

/// Begins the association of an "(object Association" in the current package.
void CreateAssociation(char* name);

/// Begins a role of the current association; does nothing without one.
void CreateAssociationRole(char* name);

/// The "client_cardinality" of the current role, or of the current class while no association is current.
void SetCardinality(char* text);

/// The "AssociationClass" of the current association: an ordinary class between two new associations. `name` may be
/// qualified. Does nothing unless the association has two roles with classes.
void CreateAssociationClass(char* name);

/// The mark that files give as the name of an association or role without a name.
inline constexpr std::string_view unnamedMark = "$UNNAMED$";

/// Whether an object of that name has none: the name is empty or begins with the mark.
[[nodiscard]] inline bool isUnnamed(std::string_view name) {
    return name.empty() || name.starts_with(unnamedMark);
}

/// The roles marked as aggregates, by association, so that marking another one does not search all roles. A role joins
/// its association when it is made, never moves and is deleted with it, and nothing else marks roles.
namespace AggregateRoles {

/// Marks the role, and removes the mark from every other role of the association, which need not be the role's own.
void mark(KelAssociationRole& role, const KelAssociation& association);
void forget(const KelAssociation& deleted) noexcept;
void clear() noexcept;

} // namespace AggregateRoles

} // namespace rose
