#include "export/relationships.h"
#include "export/uml/UmlOutput.h"
#include "export/words.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"

#include <algorithm>
#include <array>
#include <tsl/robin_set.h>

namespace exporter {

namespace {

constexpr int fewestEnds = 2;
constexpr std::array<const char*, 3> aggregations{"", "shared", "composite"};

/// The ends that UML asks for besides the roles that the association has.
std::vector<std::string> missingEnds(const KelAssociation& association, std::string_view id) {
    std::vector<std::string> ids;
    for (int made = association.associationRoles().count(); made < fewestEnds; ++made) {
        ids.push_back(partId(id, "End") + std::to_string(made + 1));
    }
    return ids;
}

/// Of the role, or 0.
int indexOf(const KelAssociationRole& role) {
    return role.getAssociation()->associationRoles()[0] == &role ? 0 : 1;
}

Details detailsOf(const KelAssociationRole& role, Aggregation aggregation, UmlOutput& output) {
    const KelAssociation& association = *role.getAssociation();
    const bool isBinary = association.associationRoles().count() == fewestEnds;
    const bool isFirst = association.associationRoles()[0] == &role;
    Details details;
    const std::optional<Bounds> bounds = boundsOf(role.multiplicity.view());
    if (!bounds || !bounds->isExact) {
        details.add("multiplicity", role.multiplicity.isEmpty() ? "unspecified" : role.multiplicity.view());
    }
    if (aggregation != Aggregation::composite && containmentWord(role.containment) != nullptr) {
        details.add("containment", containmentWord(role.containment));
    }
    const bool isSaid = isBinary && wholeOf(association) == static_cast<std::size_t>(indexOf(role));
    details.addFlag("aggregate", role.isAggregate && !isSaid);
    details.addFlag("friend", role.isFriend);
    if (role.isSource != isFirst) {
        details.add("source", role.isSource ? "true" : "false");
    }
    std::string keys;
    for (const KelForeignKey* key : role.foreignKeys()) {
        keys.append(keys.empty() ? "" : " ").append(output.idOf(*key));
    }
    if (!keys.empty()) {
        details.addMade("foreignKeys", std::move(keys));
    }
    return details;
}

void writeBounds(const Bounds& bounds, std::string_view id, UmlOutput& output) {
    output.start("lowerValue", "uml:LiteralInteger", partId(id, "Lower"), Layout::line);
    output.optionalPlain("value", bounds.lower != 0 ? std::to_string(bounds.lower) : "");
    output.end();
    output.start("upperValue", "uml:LiteralUnlimitedNatural", partId(id, "Upper"), Layout::line);
    output.optionalPlain("value", !bounds.upper ? "*" : *bounds.upper != 0 ? std::to_string(*bounds.upper) : "");
    output.end();
}

/// The bridge keeps the qualifiers of an end as a foreign key of the role at the other end: a copy of each, in any
/// order. The originals are attributes of the class at this end.
std::vector<const KelAttribute*> qualifiersOf(const KelAssociationRole& role, const KelClass* qualified) {
    std::vector<const KelAttribute*> qualifiers;
    const auto roles = role.getAssociation()->associationRoles();
    if (roles.count() != fewestEnds) {
        return qualifiers;
    }
    tsl::robin_set<const KelAttribute*, KelPointerHash> known;
    for (const KelForeignKey* key : roles[1 - indexOf(role)]->foreignKeys()) {
        for (const KelAttribute* copy : key->attributes()) {
            const KelAttribute* original =
                qualified != nullptr ? qualified->getAttribute(copy->getName(), nullptr) : nullptr;
            const KelAttribute* qualifier = original != nullptr ? original : copy;
            if (known.insert(qualifier).second) {
                qualifiers.push_back(qualifier);
            }
        }
    }
    std::ranges::stable_sort(qualifiers, {}, &KelAttribute::position); // keys are in name order
    return qualifiers;
}

void writeQualifiers(const KelAssociationRole& role, std::string_view id, UmlOutput& output) {
    for (const KelAttribute* attribute : qualifiersOf(role, output.mapping().classAt(role))) {
        const std::string qualifier = partId(partId(id, "Qualifier"), output.idOf(*attribute));
        const TypeTarget type = output.mapping().targetOf(attribute->getType());
        output.start("qualifier", "uml:Property", qualifier, Layout::line);
        output.nameOf(*attribute);
        output.typeAttribute("type", type);
        output.typeChild("type", type);
        output.defaultValue(qualifier, attribute->initialValue.view());
        output.end();
    }
}

} // namespace

void writeEnd(std::string_view tag, const KelAssociationRole& role, std::string_view associationId, UmlOutput& output) {
    const KelAssociation& association = *role.getAssociation();
    const std::string_view id = output.idOf(role);
    const KelClass* type = output.mapping().classAt(role);
    const Aggregation aggregation = association.associationRoles().count() == fewestEnds
                                        ? aggregationOf(association, static_cast<std::size_t>(indexOf(role)))
                                        : Aggregation::none;
    output.start(tag, "uml:Property", id, Layout::line);
    output.nameOf(role);
    output.optionalFlag("isStatic", role.isStatic);
    output.optionalPlain("type", type != nullptr ? output.idOf(*type) : "");
    output.optionalPlain("aggregation", aggregations[static_cast<std::size_t>(aggregation)]);
    output.plainAttribute("association", associationId);
    output.annotations(id, {}, detailsOf(role, aggregation, output));
    output.comments(role, id);
    const std::optional<Bounds> bounds = boundsOf(role.multiplicity.view());
    if (bounds) {
        writeBounds(*bounds, id, output);
    } else if (!role.multiplicity.isEmpty()) {
        output.comment(partId(id, "Multiplicity"), id, role.multiplicity.view(), {"multiplicity"});
    }
    writeQualifiers(role, id, output);
    output.end();
}

void writeEndReferences(const KelAssociation& association, UmlOutput& output, bool isContent) {
    if (isContent == output.flavour().isEcore) {
        return;
    }
    std::vector<std::string> ends;
    std::vector<std::string> navigable;
    for (const KelAssociationRole* role : association.associationRoles()) {
        ends.emplace_back(output.idOf(*role));
        if (role->isNavigable && output.mapping().ownerOf(*role) == nullptr) {
            navigable.push_back(ends.back());
        }
    }
    for (std::string& end : missingEnds(association, output.idOf(association))) {
        ends.push_back(std::move(end));
    }
    output.references("memberEnd", ends, isContent);
    output.references("navigableOwnedEnd", navigable, isContent);
}

void writeOwnedEnds(const KelAssociation& association, std::string_view id, UmlOutput& output) {
    for (const KelAssociationRole* role : association.associationRoles()) {
        if (output.mapping().ownerOf(*role) == nullptr) {
            writeEnd("ownedEnd", *role, id, output);
        }
    }
    for (const std::string& end : missingEnds(association, output.idOf(association))) {
        output.start("ownedEnd", "uml:Property", end, Layout::line);
        output.plainAttribute("association", id);
        output.end();
    }
}

void writeAssociation(const KelAssociation& association, UmlOutput& output) {
    const std::string_view id = output.idOf(association);
    output.start("packagedElement", "uml:Association", id, Layout::block);
    output.nameOf(association);
    writeEndReferences(association, output, false);
    Details details;
    details.addFlag("aggregation", association.isAggregation && (association.associationRoles().count() != fewestEnds));
    output.annotations(id, {}, details);
    output.comments(association, id);
    writeEndReferences(association, output, true);
    writeOwnedEnds(association, id, output);
    output.end();
}

} // namespace exporter
