#include "model/Relationships.h"

#include "model/Diagrams.h"
#include "model/ModelWriter.h"

#include <array>

namespace bench {

namespace {

struct RelationshipText {
    std::string_view property;
    std::string_view list;
    std::string_view object;
    std::string_view view;
    Counted counted;
    Counted firstEnd;
    Counted secondEnd;
};

/// In the order of `RelationshipKind`.
constexpr std::array<RelationshipText, 3> table{{
    {"superclasses", "inheritance_relationship_list", "Inheritance_Relationship", "InheritView",
     Counted::generalizations, Counted::subtypes, Counted::supertypes},
    {"realized_interfaces", "realize_rel_list", "Realize_Relationship", "RealizeView", Counted::realizations,
     Counted::realizationClasses, Counted::specificationClasses},
    {"used_nodes", "uses_relationship_list", "Uses_Relationship", "UsesView", Counted::dependencies, Counted::clients,
     Counted::suppliers},
}};

const RelationshipText& textOf(RelationshipKind kind) {
    return table[static_cast<std::size_t>(kind)];
}

} // namespace

void relationship(ModelWriter& writer, RelationshipKind kind, std::string_view supplier) {
    const RelationshipText& words = textOf(kind);
    writer.text.beginList(words.property, words.list);
    writer.text.beginObject(words.object);
    writer.quid();
    writer.text.quoted("supplier", supplier);
    writer.quidu();
    writer.text.end();
    writer.text.end();
    for (const Counted counted : {words.counted, words.firstEnd, words.secondEnd}) {
        writer.counts.add(counted);
    }
}

void relationshipView(ModelWriter& writer, RelationshipKind kind, std::uint64_t client, std::uint64_t supplier) {
    writer.text.beginView(textOf(kind).view, {""}, writer.nextView++);
    writer.text.plain("stereotype", "TRUE");
    writer.text.number("line_color", 3342489);
    writer.quidu();
    writer.text.reference("client", client);
    writer.text.reference("supplier", supplier);
    writer.text.number("line_style", 0);
    attachments(writer);
    writer.text.end();
    writer.counts.add(Counted::drawnElements);
}

} // namespace bench
