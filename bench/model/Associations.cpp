#include "model/Associations.h"

#include "model/Diagrams.h"
#include "model/Features.h"
#include "model/ModelWriter.h"
#include "model/ToolProperties.h"

namespace bench {

namespace {

void role(ModelWriter& writer, const RoleText& role) {
    PetalText& text = writer.text;
    text.beginObject("Role", role.name);
    uuid(writer, 22);
    writer.quid();
    text.quoted("label", role.name);
    text.quoted("supplier", role.supplier);
    writer.quidu();
    if (!role.qualifiers.empty()) {
        text.beginList("keys", "class_attribute_list");
        for (const std::string& name : role.qualifiers) {
            qualifier(writer, name);
        }
        text.end();
    }
    text.value("client_cardinality", "cardinality", role.cardinality);
    if (role.isNavigable) {
        text.plain("is_navigable", "TRUE");
    }
    if (role.isAggregate) {
        text.plain("is_aggregate", "TRUE");
    }
    text.end();
    writer.counts.add(Counted::roles);
    writer.counts.add(Counted::roleClasses);
}

void roleView(ModelWriter& writer, std::uint64_t association, std::uint64_t drawnClass) {
    PetalText& text = writer.text;
    const std::uint64_t number = writer.nextView++;
    text.beginView("RoleView", {featureName(number)}, number);
    text.reference("Parent_View", association);
    text.plain("location", "(286, -485)");
    text.beginObjectOf("label", "SegLabel");
    text.reference("Parent_View", number);
    text.plain("location", "(555, 1589)");
    text.number("anchor", 1);
    text.number("anchor_loc", 1);
    text.number("nlines", 1);
    text.number("max_width", 132);
    text.quoted("label", "+" + featureName(number));
    text.plain("pctDist", "0.371257");
    text.number("height", 39);
    text.end();
    text.plain("stereotype", "TRUE");
    text.number("line_color", 3342489);
    writer.quidu();
    text.reference("client", association);
    text.reference("supplier", drawnClass);
    text.number("line_style", 0);
    attachments(writer);
    text.end();
}

} // namespace

void association(ModelWriter& writer, std::uint64_t number, const RoleText& first, const RoleText& second) {
    PetalText& text = writer.text;
    text.beginObject("Association", "$UNNAMED$" + std::to_string(number));
    uuid(writer, 8);
    text.quoted("quid", associationQuid(number));
    text.beginList("roles", "role_list");
    role(writer, first);
    role(writer, second);
    text.end();
    text.end();
    writer.counts.add(Counted::associations);
}

void associationView(ModelWriter& writer, std::uint64_t number, std::uint64_t firstClass, std::uint64_t secondClass) {
    PetalText& text = writer.text;
    const std::uint64_t view = writer.nextView++;
    text.beginView("AssociationViewNew", {"$UNNAMED$" + std::to_string(number)}, view);
    text.plain("location", "(494, 1627)");
    text.plain("stereotype", "TRUE");
    text.number("line_color", 3342489);
    text.quoted("quidu", associationQuid(number));
    text.beginList("roleview_list", "RoleViews");
    roleView(writer, view, firstClass);
    roleView(writer, view, secondClass);
    text.end();
    text.end();
    writer.counts.add(Counted::drawnElements);
}

void leanAssociationView(ModelWriter& writer, std::uint64_t number) {
    writer.text.beginView("AssociationViewNew", {""}, writer.nextView++);
    writer.text.quoted("quidu", associationQuid(number));
    writer.text.end();
    writer.counts.add(Counted::drawnElements);
}

} // namespace bench
