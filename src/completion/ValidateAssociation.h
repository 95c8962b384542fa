#pragma once

class KelAssociation;

namespace rose {

/// Deletes the association, with the qualifiers and keys made for it, unless it has two roles and each has a class;
/// true when it has. The keys of an aggregation also make up the key of the class that they are in, and a role's
/// mark for having no name is cleared.
bool ValidateAssociation(KelAssociation* association);

} // namespace rose
