#pragma once

#include "host/containers/KelLinkTree.h"

class KelAssociation;
class KelString;

namespace rose {

/// Association placeholders ordered by quid; an association without one is ordered by its name.
///
/// The elements are `KelAssociation`s, which the tree does not own. A key is a pointer to a `KelString` with a quid.
class QuidTree final : public KelLinkTree {
public:
    int compare2Object(const void* left, const void* right) const override;
    int compare2Key(const void* element, const void* key) const override;
};

/// The "quid" line: the first one of the active association becomes its quid, and a placeholder that waits under it is
/// merged into the association. Quids of other objects are not kept.
void SetQuid(char* quid);

/// The "Parent_View" line: a view number for the note being read, the active object, or the next association. The
/// number of a compartment is skipped.
void CreateToolID(char* text);

/// The associations that have a quid: the placeholders in `toBeAssociations`, and those in packages. Lookups and
/// changes cost O(log n).
namespace QuidRegistry {

/// Hangs a copy of the quid on the association, which replaces an earlier one. PRECONDITION: an association in
/// `toBeAssociations` keeps its quid.
void hang(KelAssociation& association, const KelString& quid);

/// The placeholder with that quid, or null. Equivalent to a linear search by index: the tree is ordered by quid, so
/// the first of equal ones here is the first there.
[[nodiscard]] KelAssociation* findPlaceholder(const KelString& quid);

/// The association with that quid in the first package, in the order of creation, that has one; or null.
[[nodiscard]] KelAssociation* findInPackages(const KelString& quid);

/// Frees the quid of an association that is being deleted, and removes it from the registry.
void forget(KelAssociation& association) noexcept;
/// Forgets the associations in packages. They keep their quids; the placeholders stay.
void clear() noexcept;

} // namespace QuidRegistry

} // namespace rose
