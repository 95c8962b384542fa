#include "export/sql/makeSchema.h"

#include "export/sql/Layout.h"

#include <algorithm>

namespace exporter::sql {

namespace {

/// Names that differ from those of the model in more than style.
void tellNames(Schema& schema) {
    for (const Table& table : schema.tables) {
        if (table.name.change.isAny()) {
            schema.decisions.push_back({Topic::name, table.name.text + " is " + shownName(*table.element) + ", " +
                                                         changeText(table.name.change)});
        }
        for (const Column& column : table.columns) {
            if (column.name.change.isAny()) {
                schema.decisions.push_back({Topic::name, table.name.text + "." + column.name.text + " is " +
                                                             shownName(*column.element) + ", " +
                                                             changeText(column.name.change)});
            }
        }
    }
}

void tellUnknownTypes(const Plan& plan, const Layout& layout, Schema& schema) {
    for (const auto& [name, columns] : plan.unknownTypes) {
        std::string text = name.empty() ? "without a type:" : name + ":";
        bool isFirst = true;
        for (const auto& [table, attribute] : columns) {
            const std::uint32_t column = layout.tables[table].attributes[attribute].first;
            text += (isFirst ? " " : ", ") + schema.tables[table].name.text + "." +
                    schema.tables[table].columns[column].name.text;
            isFirst = false;
        }
        schema.decisions.push_back({Topic::unknownType, std::move(text)});
    }
}

} // namespace

Schema makeSchema(const KelModel& model, const SchemaChoices& choices, const FindIds& findIds, Omissions& omissions) {
    Schema schema;
    const ClassTables classes(model, choices.kinds, choices.tables, omissions, schema.decisions);
    Plan plan = planTables(model, classes, choices, schema, omissions);
    planReferences(classes, choices, plan, schema, omissions);
    NameSpace relations(NameSpace::Kind::relations, choices.names);
    NamingOrder order(findIds);
    const Layout layout = layColumns(plan, classes, choices.names, order, relations, schema);
    addConstraints(plan, layout, choices.names, order, relations, schema);
    tellUnknownTypes(plan, layout, schema);
    tellNames(schema);
    std::ranges::stable_sort(schema.decisions, {}, &Decision::topic);
    return schema;
}

} // namespace exporter::sql
