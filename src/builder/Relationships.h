#pragma once

#include "builder/indexes/RelationshipIndex.h"

class KelDependency;
class KelGeneralization;
class KelModelElement;
class KelRealization;

namespace rose {

/// Each begins a relationship of the current class, which is its subtype, its realization or its client.
void CreateGeneralization();
void CreateRealization();
void CreateDependency();

/// Each sets the supplier end of a relationship. The indexes by the classes at both ends require that nothing else
/// does.
void bindSupertype(KelGeneralization& generalization, KelClass& supertype);
void bindSpecification(KelRealization& realization, KelClass& specification);
void bindSupplier(KelDependency& dependency, KelClass& supplier);

[[nodiscard]] RelationshipIndex<KelGeneralization>& generalizationIndex();
[[nodiscard]] RelationshipIndex<KelRealization>& realizationIndex();
[[nodiscard]] RelationshipIndex<KelDependency>& dependencyIndex();

/// Removes a class or a relationship that is being deleted from the indexes.
void forgetRelationships(KelModelElement& element) noexcept;
void clearRelationshipIndexes() noexcept;

} // namespace rose
