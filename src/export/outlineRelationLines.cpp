#include "export/outlineLinesOf.h"

#include "export/outlineText.h"
#include "export/words.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

namespace exporter {

namespace {

/// What a relation is, its name if it has one, and the classes at its ends.
std::string relation(const char* what, const KelRelationship& relationship, const std::string& from,
                     const std::string& to) {
    return what + after(" ", relationship.getName()) + ": " + from + " -> " + to;
}

/// The foreign keys of a role, those without a name by their attributes.
std::string foreignKeysOf(const KelAssociationRole& role) {
    std::string keys;
    for (const KelForeignKey* key : role.foreignKeys()) {
        keys += keys.empty() ? "" : ", ";
        keys += key->getName().isEmpty() ? namesOf(key->attributes()) : plain(key->getName());
    }
    return "foreign key " + keys;
}

} // namespace

std::string lineOf(const KelAssociation& association) {
    std::string ends;
    for (const KelAssociationRole* role : association.associationRoles()) {
        ends += (ends.empty() ? ": " : ", ") + nameOf(role->getAssociatedClass());
    }
    return "association" + after(" ", association.getName()) + ends +
           remarks({{association.isAggregation, "aggregation"}});
}

std::string lineOf(const KelAssociationRole& role) {
    return "role" + after(" ", role.getName()) + ": " + nameOf(role.getAssociatedClass()) +
           (role.multiplicity.isEmpty() ? std::string() : " [" + plain(role.multiplicity) + "]") +
           remarks({{role.isSource, "source"},
                    {role.isNavigable, "navigable"},
                    {role.isAggregate, "aggregate"},
                    {role.containment == 0, "by value"},
                    {role.containment == 1, "by reference"},
                    {role.isStatic, "static"},
                    {role.isFriend, "friend"},
                    {!role.foreignKeys().isEmpty(), foreignKeysOf(role)}});
}

std::string lineOf(const KelGeneralization& generalization) {
    const char* visibility = visibilityWord(generalization.visibility);
    return relation("generalization", generalization, namesOf(generalization.subtypeClasses()),
                    namesOf(generalization.supertypeClasses())) +
           remarks({{generalization.visibility != 0 && visibility != nullptr, visibility != nullptr ? visibility : ""},
                    {generalization.isVirtual, "virtual"},
                    {generalization.isFriend, "friend"}});
}

std::string lineOf(const KelRealization& realization) {
    return relation("realization", realization, nameOf(realization.getRealizationClass()),
                    nameOf(realization.getSpecificationClass()));
}

std::string lineOf(const KelDependency& dependency) {
    return relation("dependency", dependency, nameOf(dependency.getClientClass()),
                    nameOf(dependency.getSupplierClass()));
}

} // namespace exporter
