#include "export/sql/Layout.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelForeignKey.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace exporter::sql {

namespace {

class ConstraintMaker {
public:
    ConstraintMaker(const Plan& plan, const Layout& layout, const NameStyle& style, const NamingOrder& order,
                    NameSpace& relations, Schema& schema)
        : plan_(plan), layout_(layout), style_(style), relations_(relations), schema_(schema),
          tables_(order.tablesOf(plan)) {}

    void make() {
        reserveSequences();
        for (const std::uint32_t table : tables_) {
            addKeys(table);
        }
        for (const std::uint32_t table : tables_) {
            addReferences(table);
        }
        for (const std::uint32_t table : tables_) {
            addIndexesAndChecks(table);
        }
    }

private:
    void reserveSequences();
    void addKeys(std::uint32_t table);
    void addUnique(std::uint32_t table, Columns columns, const std::string& name, Rule rule, const KelObject* element);
    void addReferences(std::uint32_t table);
    void addReference(std::uint32_t table, const PlannedColumn& planned, const ColumnSpan& span);
    void addForeignKeys(std::uint32_t table);
    void addIndexesAndChecks(std::uint32_t table);

    std::string constraint(std::string_view prefix, std::uint32_t table, std::string_view rest) {
        text_.assign(prefix).append(schema_.tables[table].name.text).append("_").append(rest);
        return relations_.make(text_).text;
    }
    [[nodiscard]] std::string joinedNames(std::uint32_t table, const Columns& columns) const {
        std::string text;
        for (const std::uint32_t column : columns) {
            text += (text.empty() ? "" : "_") + schema_.tables[table].columns[column].name.text;
        }
        return text;
    }

    const Plan& plan_;
    const Layout& layout_;
    const NameStyle& style_;
    NameSpace& relations_;
    Schema& schema_;
    const std::vector<std::uint32_t> tables_; // in the order of naming
    std::string text_;                        // of the constraint that is being named
    std::vector<const Columns*> begun_;       // what an index of the table begins with
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> foreignKeys_; // by table, indexes into the plan's
};

/// PostgreSQL names the sequence of a generated column so, as long as no table has the name.
void ConstraintMaker::reserveSequences() {
    for (const std::uint32_t table : tables_) {
        for (const std::uint32_t column : layout_.tables[table].keyColumns) {
            const Column& made = schema_.tables[table].columns[column];
            if (made.isGenerated) {
                text_.assign(schema_.tables[table].name.text).append("_").append(made.name.text).append("_seq");
                if (text_.size() <= style_.longest) {
                    static_cast<void>(relations_.make(text_));
                }
            }
        }
    }
}

void ConstraintMaker::addUnique(std::uint32_t table, Columns columns, const std::string& name, Rule rule,
                                const KelObject* element) {
    Table& made = schema_.tables[table];
    const std::set<std::uint32_t> wanted(columns.begin(), columns.end());
    const auto isSame = [&](const Key& key) {
        return std::set<std::uint32_t>(key.columns.begin(), key.columns.end()) == wanted;
    };
    if ((made.primary && isSame(*made.primary)) || std::ranges::any_of(made.uniques, isSame)) {
        return;
    }
    made.uniques.push_back(
        {.name = constraint("uq_", table, name), .columns = std::move(columns), .rule = rule, .element = element});
}

void ConstraintMaker::addKeys(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    Table& made = schema_.tables[table];
    const KelObject* element = planned.primary.key != nullptr ? planned.primary.key : planned.element;
    text_.assign("pk_").append(made.name.text);
    made.primary = Key{.name = relations_.make(text_).text,
                       .columns = layout_.tables[table].keyColumns,
                       .rule = planned.keyPlan == KeyPlan::made        ? Rule::madeKey
                               : planned.keyPlan == KeyPlan::inherited ? Rule::inheritedKey
                               : planned.keyPlan == KeyPlan::natural   ? Rule::primaryKey
                                                                       : Rule::joinTable,
                       .element = element};
    for (const std::uint32_t column : layout_.tables[table].keyColumns) {
        made.columns[column].isNotNull = true;
    }
    for (const PlannedKey& unique : planned.uniques) {
        Columns columns = layout_.tables[table].columnsOf(unique.columns);
        const std::string name =
            unique.key->getName().isEmpty() ? joinedNames(table, columns) : styled(utf8(unique.key->getName()), style_);
        addUnique(table, std::move(columns), name, Rule::candidateKey, unique.key);
    }
    for (std::size_t index = 0; index < planned.references.size(); ++index) {
        const PlannedColumn& reference = planned.references[index];
        if (reference.isUnique) {
            const Columns columns = layout_.tables[table].references[index].columns();
            const bool isSupertype = reference.rule == Rule::supertypeReference;
            addUnique(table, columns, styled(reference.name, style_),
                      isSupertype ? Rule::supertypeReference : Rule::oneToOne, reference.element);
        }
    }
}

void ConstraintMaker::addReference(std::uint32_t table, const PlannedColumn& planned, const ColumnSpan& span) {
    schema_.tables[table].references.push_back({.name = constraint("fk_", table, styled(planned.name, style_)),
                                                .columns = span.columns(),
                                                .table = planned.target,
                                                .keyColumns = layout_.tables[planned.target].keyColumns,
                                                .cascades = planned.cascades,
                                                .rule = planned.rule,
                                                .element = planned.element});
}

void ConstraintMaker::addForeignKeys(std::uint32_t table) {
    const auto keys = foreignKeys_.find(table);
    if (keys == foreignKeys_.end()) {
        return;
    }
    for (const std::uint32_t index : keys->second) {
        const PlannedForeignKey& key = plan_.foreignKeys[index];
        const Columns columns = layout_.tables[table].columnsOf(key.columns);
        const std::string name =
            key.key->getName().isEmpty() ? joinedNames(table, columns) : styled(utf8(key.key->getName()), style_);
        schema_.tables[table].references.push_back(
            {.name = constraint("fk_", table, name),
             .columns = columns,
             .table = key.targetTable,
             .keyColumns = layout_.tables[key.targetTable].columnsOf(key.targetColumns),
             .cascades = key.cascades,
             .rule = Rule::foreignKey,
             .element = key.key});
    }
}

void ConstraintMaker::addReferences(std::uint32_t table) {
    if (foreignKeys_.empty()) {
        for (std::uint32_t index = 0; index < plan_.foreignKeys.size(); ++index) {
            foreignKeys_[plan_.foreignKeys[index].table].push_back(index);
        }
    }
    const PlannedTable& planned = plan_.tables[table];
    const TableLayout& layout = layout_.tables[table];
    if (planned.keyPlan == KeyPlan::inherited) {
        Table& made = schema_.tables[table];
        made.references.push_back({.name = constraint("fk_", table, schema_.tables[planned.supertable].name.text),
                                   .columns = layout_.tables[table].keyColumns,
                                   .table = planned.supertable,
                                   .keyColumns = layout_.tables[planned.supertable].keyColumns,
                                   .cascades = true,
                                   .rule = Rule::inheritedKey,
                                   .element = planned.inheritance});
    }
    for (std::size_t index = 0; index < planned.attributes.size(); ++index) {
        if (planned.attributes[index].target != noTable) {
            addReference(table, planned.attributes[index], layout.attributes[index]);
        }
    }
    addForeignKeys(table);
    for (std::size_t index = 0; index < planned.references.size(); ++index) {
        addReference(table, planned.references[index], layout.references[index]);
    }
}

void ConstraintMaker::addIndexesAndChecks(std::uint32_t table) {
    Table& made = schema_.tables[table];
    const auto mark = [&](const Columns& columns) {
        for (const std::uint32_t column : columns) {
            made.columns[column].isKey = true;
        }
    };
    begun_.assign(1, &made.primary->columns);
    std::ranges::for_each(made.uniques, [&](const Key& key) { begun_.push_back(&key.columns); });
    std::set<Columns> indexed;
    for (const Reference& reference : made.references) {
        mark(reference.columns);
        const bool hasIndex = std::ranges::any_of(begun_, [&](const Columns* columns) {
            return columns->size() >= reference.columns.size() &&
                   std::equal(reference.columns.begin(), reference.columns.end(), columns->begin());
        });
        if (!hasIndex && indexed.insert(reference.columns).second) {
            made.indexes.push_back(
                {constraint("ix_", table, joinedNames(table, reference.columns)), reference.columns});
        }
    }
    std::ranges::for_each(begun_, [&](const Columns* columns) { mark(*columns); });
    for (Column& column : made.columns) {
        if (column.values != nullptr) {
            column.check = constraint("ck_", table, column.name.text);
        }
    }
}

} // namespace

void addConstraints(const Plan& plan, const Layout& layout, const NameStyle& style, NamingOrder& order,
                    NameSpace& relations, Schema& schema) {
    ConstraintMaker(plan, layout, style, order, relations, schema).make();
    if (order.mustRepeat(relations)) {
        for (Table& table : schema.tables) {
            static_cast<void>(relations.make(table.name.text)); // no two of these clash
            table.primary.reset();
            table.uniques.clear();
            table.references.clear();
            table.indexes.clear();
        }
        ConstraintMaker(plan, layout, style, order, relations, schema).make();
    }
}

} // namespace exporter::sql
