#pragma once

#include "builder/indexes/RelationshipIndex.h"

class KelDependency;
class KelGeneralization;
class KelModelElement;
class KelRealization;

namespace rose {

/// The supplier end of a relationship is bound here, so that the indexes by the classes at both ends stay in step.
void bindSupertype(KelGeneralization& generalization, KelClass& supertype);
void bindSpecification(KelRealization& realization, KelClass& specification);
void bindSupplier(KelDependency& dependency, KelClass& supplier);

[[nodiscard]] RelationshipIndex<KelGeneralization>& generalizationIndex();
[[nodiscard]] RelationshipIndex<KelRealization>& realizationIndex();
[[nodiscard]] RelationshipIndex<KelDependency>& dependencyIndex();

/// Takes a class or a relationship that is being deleted out of the indexes.
void forgetRelationships(KelModelElement& element) noexcept;
void clearRelationshipIndexes() noexcept;

} // namespace rose
