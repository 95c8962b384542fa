#include "builder/Relationships.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

#include <array>
#include <memory>

namespace rose {

namespace {

RelationshipIndex<KelGeneralization> generalizations;
RelationshipIndex<KelRealization> realizations;
RelationshipIndex<KelDependency> dependencies;

void unbind(KelRealization& realization) noexcept {
    realizations.remove(realization.getRealizationClass(), realization.getSpecificationClass(), realization);
}

void unbind(KelDependency& dependency) noexcept {
    dependencies.remove(dependency.getClientClass(), dependency.getSupplierClass(), dependency);
}

/// Removes the generalization from all pairs of these ends.
template <class Subtypes, class Supertypes>
void unbind(KelGeneralization& generalization, const Subtypes& subtypes, const Supertypes& supertypes) noexcept {
    for (const KelClass* subtype : subtypes) {
        for (const KelClass* supertype : supertypes) {
            generalizations.remove(subtype, supertype, generalization);
        }
    }
}

template <class Links>
void unbindAll(const Links& links) noexcept {
    for (auto* relationship : links) {
        unbind(*relationship);
    }
}

/// Removes a class that is being deleted, but not the other ends of its relationships.
void forgetClass(const KelClass& deleted) noexcept {
    const std::array self{&deleted};
    for (KelGeneralization* generalization : deleted.generalizationsAsSubtype()) {
        unbind(*generalization, self, generalization->supertypeClasses());
    }
    for (KelGeneralization* generalization : deleted.generalizationsAsSupertype()) {
        unbind(*generalization, generalization->subtypeClasses(), self);
    }
    unbindAll(deleted.realizationsAsRealization());
    unbindAll(deleted.realizationsAsSpecification());
    unbindAll(deleted.dependenciesAsClient());
    unbindAll(deleted.dependenciesAsSupplier());
}

} // namespace

void bindSupertype(KelGeneralization& generalization, KelClass& supertype) {
    if (generalization.addSupertypeClass(&supertype)) {
        for (const KelClass* subtype : generalization.subtypeClasses()) {
            generalizations.add(*subtype, supertype, generalization);
        }
    }
    trace::changed(generalization, &supertype);
}

void bindSpecification(KelRealization& realization, KelClass& specification) {
    unbind(realization);
    realization.addSpecificationClass(&specification);
    if (const KelClass* client = realization.getRealizationClass(); client != nullptr) {
        realizations.add(*client, specification, realization);
    }
    trace::changed(realization, &specification);
}

void bindSupplier(KelDependency& dependency, KelClass& supplier) {
    unbind(dependency);
    dependency.addSupplierClass(&supplier);
    if (const KelClass* client = dependency.getClientClass(); client != nullptr) {
        dependencies.add(*client, supplier, dependency);
    }
    trace::changed(dependency, &supplier);
}

RelationshipIndex<KelGeneralization>& generalizationIndex() {
    return generalizations;
}

RelationshipIndex<KelRealization>& realizationIndex() {
    return realizations;
}

RelationshipIndex<KelDependency>& dependencyIndex() {
    return dependencies;
}

void forgetRelationships(KelModelElement& element) noexcept {
    switch (element.elementType) {
    case KelElementType::generalization: {
        auto& deleted = static_cast<KelGeneralization&>(element);
        unbind(deleted, deleted.subtypeClasses(), deleted.supertypeClasses());
        generalizations.forget(deleted);
        break;
    }
    case KelElementType::realization: {
        auto& deleted = static_cast<KelRealization&>(element);
        unbind(deleted);
        realizations.forget(deleted);
        break;
    }
    case KelElementType::dependency: {
        auto& deleted = static_cast<KelDependency&>(element);
        unbind(deleted);
        dependencies.forget(deleted);
        break;
    }
    case KelElementType::classObject:
        forgetClass(static_cast<KelClass&>(element));
        break;
    default:
        break;
    }
}

void clearRelationshipIndexes() noexcept {
    generalizations.clear();
    realizations.clear();
    dependencies.clear();
}

namespace {

/// Makes a new relationship of the current class current, the only one of the three kinds. `link` makes the class
/// its client end.
template <class Relationship>
void createRelationship(Relationship*& current, bool (Relationship::*link)(KelClass*)) {
    state.clearRelationships();
    auto made = std::make_unique<Relationship>();
    ((*made).*link)(state.aClass);
    current = attach(std::move(made), [](Relationship* added) { return place(*state.aPackage, *added); });
    state.activeObject = current;
    state.InNoteView = false;
}

} // namespace

void CreateGeneralization() {
    createRelationship(state.aGeneral, &KelGeneralization::addSubtypeClass);
}

void CreateRealization() {
    createRelationship(state.aRealization, &KelRealization::addRealizationClass);
}

void CreateDependency() {
    createRelationship(state.aDependency, &KelDependency::addClientClass);
}

} // namespace rose
