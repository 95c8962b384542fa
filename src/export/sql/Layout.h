#pragma once

#include "export/sql/Plan.h"
#include "export/sql/SchemaNames.h"

namespace exporter::sql {

/// Columns of a table that are together.
struct ColumnSpan {
    std::uint32_t first = 0;
    std::uint32_t count = 0;

    [[nodiscard]] Columns columns() const {
        Columns columns(count);
        for (std::uint32_t index = 0; index < count; ++index) {
            columns[index] = first + index;
        }
        return columns;
    }
};

/// Where the planned columns of a table are in the schema's table.
struct TableLayout {
    ColumnSpan key; // made or inherited
    ColumnSpan kind;
    std::vector<ColumnSpan> attributes; // as planned
    std::vector<ColumnSpan> references;
    Columns keyColumns; // the primary key
    std::vector<ColumnType> keyTypes;
    bool isMade = false; // the key, or the one it is inherited from

    /// The columns of planned attributes that are one column each.
    [[nodiscard]] Columns columnsOf(const std::vector<std::uint32_t>& planned) const {
        Columns columns;
        for (const std::uint32_t attribute : planned) {
            columns.push_back(attributes[attribute].first);
        }
        return columns;
    }
};

struct Layout {
    std::vector<TableLayout> tables;
    std::vector<std::uint32_t> byId; // tables by the ids of their elements: those of classes, then the others
};

/// Makes the tables of the plan, with their columns and names, but without keys and constraints.
[[nodiscard]] Layout layColumns(const Plan& plan, const ClassTables& classes, const NameStyle& style,
                                const ElementIds& ids, NameSpace& relations, Schema& schema);

/// Adds keys, references, indexes and checks.
void addConstraints(const Plan& plan, const Layout& layout, const NameStyle& style, NameSpace& relations,
                    Schema& schema);

} // namespace exporter::sql
