#pragma once

#include "export/ElementIds.h"
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
};

/// The order in which names are made. It is that of the elements' ids, but matters only where names clash: until the
/// first clash it is that of the plan, as ids take long to find.
class NamingOrder {
public:
    explicit NamingOrder(const FindIds& findIds) : findIds_(findIds) {}

    /// What elements are sorted by: their ids, or the empty text until the first clash.
    [[nodiscard]] std::string_view keyOf(const KelObject& element) const {
        return ids_ != nullptr ? ids_->viewOf(element) : std::string_view();
    }
    /// The tables of classes, then the others.
    [[nodiscard]] std::vector<std::uint32_t> tablesOf(const Plan& plan) const;
    /// Whether the names must be made again, in the order of ids, as they are the first that clash. Frees them then.
    [[nodiscard]] bool mustRepeat(NameSpace& names);
    [[nodiscard]] const ElementIds& ids();

private:
    const FindIds& findIds_;
    const ElementIds* ids_ = nullptr; // null: not needed yet
};

/// Makes the tables of the plan, with their columns and names, but without keys and constraints.
[[nodiscard]] Layout layColumns(const Plan& plan, const ClassTables& classes, const NameStyle& style,
                                NamingOrder& order, NameSpace& relations, Schema& schema);

/// Adds keys, references, indexes and checks.
void addConstraints(const Plan& plan, const Layout& layout, const NameStyle& style, NamingOrder& order,
                    NameSpace& relations, Schema& schema);

} // namespace exporter::sql
