#pragma once

class KelAssociation;
class KelString;

/// The associations that have a quid: the placeholders in `toBeAssociations`, and those in packages.
namespace rose::QuidRegistry {

/// Hangs a copy of the quid on the association, in place of an earlier one. An association in `toBeAssociations`
/// must not change its quid.
void hang(KelAssociation& association, const KelString& quid);

/// The placeholder with that quid, or null. A walk by index would find the same one: the tree is in the order of
/// quids, so the first of those that are equal is the first that the walk meets.
[[nodiscard]] KelAssociation* findPlaceholder(const KelString& quid);

/// The association with that quid in the first package, in the order of creation, that has one; or null.
[[nodiscard]] KelAssociation* findInPackages(const KelString& quid);

/// Frees the quid of an association that is being deleted, and takes it out of the registry.
void forget(KelAssociation& association) noexcept;
/// Forgets the associations in packages. Their quids stay with them, as do the placeholders.
void clear() noexcept;

} // namespace rose::QuidRegistry
