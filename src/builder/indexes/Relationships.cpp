#include "builder/indexes/Relationships.h"

#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

namespace rose {

namespace {

RelationshipIndex generalizations;
RelationshipIndex realizations;
RelationshipIndex dependencies;

void forget(KelGeneralization& generalization) noexcept {
    for (const KelClass* subtype : generalization.subtypeClasses()) {
        for (const KelClass* supertype : generalization.supertypeClasses()) {
            generalizations.remove(*subtype, *supertype, generalization);
        }
    }
}

void forget(KelRealization& realization) noexcept {
    if (realization.getRealizationClass() != nullptr && realization.getSpecificationClass() != nullptr) {
        realizations.remove(*realization.getRealizationClass(), *realization.getSpecificationClass(), realization);
    }
}

void forget(KelDependency& dependency) noexcept {
    if (dependency.getClientClass() != nullptr && dependency.getSupplierClass() != nullptr) {
        dependencies.remove(*dependency.getClientClass(), *dependency.getSupplierClass(), dependency);
    }
}

/// Notes a relationship of type `Relationship`, whose place is that among `clients`.
template <class Relationship>
void addTo(RelationshipIndex& index, const KelClass& client, const KelClass& supplier, Relationship& relationship,
           const KelLinks<Relationship>& clients) {
    index.add(client, supplier, relationship, [&](const KelRelationship& other) {
        return clients.indexOf(static_cast<const Relationship&>(other));
    });
}

template <class Links>
void forgetAll(const Links& links) noexcept {
    for (auto* relationship : links) {
        forget(*relationship);
    }
}

} // namespace

void bindSupertype(KelGeneralization& generalization, KelClass& supertype) {
    if (generalization.addSupertypeClass(&supertype)) {
        for (const KelClass* subtype : generalization.subtypeClasses()) {
            addTo(generalizations, *subtype, supertype, generalization, subtype->generalizationsAsSubtype());
        }
    }
}

void bindSpecification(KelRealization& realization, KelClass& specification) {
    forget(realization);
    realization.addSpecificationClass(&specification);
    if (const KelClass* client = realization.getRealizationClass(); client != nullptr) {
        addTo(realizations, *client, specification, realization, client->realizationsAsRealization());
    }
}

void bindSupplier(KelDependency& dependency, KelClass& supplier) {
    forget(dependency);
    dependency.addSupplierClass(&supplier);
    if (const KelClass* client = dependency.getClientClass(); client != nullptr) {
        addTo(dependencies, *client, supplier, dependency, client->dependenciesAsClient());
    }
}

RelationshipIndex& generalizationIndex() { return generalizations; }

RelationshipIndex& realizationIndex() { return realizations; }

RelationshipIndex& dependencyIndex() { return dependencies; }

void forgetRelationships(KelModelElement& element) noexcept {
    switch (element.elementType) {
    case KelElementType::generalization:
        forget(static_cast<KelGeneralization&>(element));
        break;
    case KelElementType::realization:
        forget(static_cast<KelRealization&>(element));
        break;
    case KelElementType::dependency:
        forget(static_cast<KelDependency&>(element));
        break;
    case KelElementType::classObject: {
        const auto& deleted = static_cast<KelClass&>(element);
        forgetAll(deleted.generalizationsAsSubtype());
        forgetAll(deleted.generalizationsAsSupertype());
        forgetAll(deleted.realizationsAsRealization());
        forgetAll(deleted.realizationsAsSpecification());
        forgetAll(deleted.dependenciesAsClient());
        forgetAll(deleted.dependenciesAsSupplier());
        break;
    }
    default:
        break;
    }
}

void clearRelationshipIndexes() noexcept {
    generalizations.clear();
    realizations.clear();
    dependencies.clear();
}

} // namespace rose
