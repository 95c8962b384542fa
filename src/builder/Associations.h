#pragma once

namespace rose {

/// Begins the association of an "(object Association" in the current package.
void CreateAssociation(char* name);

/// Begins a role of the current association; does nothing without one.
void CreateAssociationRole(char* name);

/// The "client_cardinality" of the current role, or of the current class while no association is current.
void SetCardinality(char* text);

/// The "AssociationClass" of the current association: an ordinary class between two new associations. `name` may
/// be qualified. Does nothing unless the association has two roles with classes.
void CreateAssociationClass(char* name);

} // namespace rose
