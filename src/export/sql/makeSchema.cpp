#include "export/sql/makeSchema.h"

#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/sql/Plan.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <deque>
#include <set>
#include <unordered_map>

namespace exporter::sql {

namespace {

constexpr ColumnType madeKeyType{.family = Family::bigInteger, .length = 0, .scale = 0, .sql = {}};

std::string utf8(const KelString& text) {
    return text::repairedUtf8(text.view());
}

class Maker {
public:
    Maker(Plan plan, const ClassTables& classes, const SchemaChoices& choices, const ElementIds& ids, Schema& schema)
        : plan_(std::move(plan)), classes_(classes), choices_(choices), ids_(ids), schema_(schema),
          relations_(NameSpace::Kind::relations, choices.names) {}

    void make() {
        sortById();
        nameTables();
        orderTables();
        for (const std::uint32_t table : order_) {
            layKey(table);
        }
        for (const std::uint32_t table : order_) {
            layRest(table);
            nameOwnColumns(table);
        }
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            nameReferences(table);
            names_[table].reset();
        }
        reserveSequences();
        for (const std::uint32_t table : byId_) {
            addKeys(table);
        }
        for (const std::uint32_t table : byId_) {
            addReferences(table);
        }
        for (const std::uint32_t table : byId_) {
            addIndexesAndChecks(table);
        }
        tellNames();
        tellUnknownTypes();
    }

private:
    /// The columns of a planned attribute or reference within their table.
    struct Span {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };
    struct Layout {
        Span key;
        Span kind;
        std::vector<Span> attributes; // as planned
        std::vector<Span> references;
    };

    void sortById();
    void nameTables();
    void orderTables();
    void layKey(std::uint32_t table);
    void layRest(std::uint32_t table);
    Span lay(std::uint32_t table, const PlannedColumn& planned);
    Column& add(std::uint32_t table, Rule rule, const KelObject* element, const ColumnType& type);
    void nameOwnColumns(std::uint32_t table);
    void nameReferences(std::uint32_t table);
    void nameReference(std::uint32_t table, const PlannedColumn& planned, const Span& span);
    void setKind(Column& column, const PlannedTable& planned);
    std::vector<std::uint32_t> attributesById(const PlannedTable& planned, bool areSplit) const;
    void reserveSequences();
    void addKeys(std::uint32_t table);
    void addUnique(std::uint32_t table, Columns columns, const std::string& name, Rule rule, const KelObject* element);
    void addReferences(std::uint32_t table);
    void addReference(std::uint32_t table, const PlannedColumn& planned, const Span& span);
    void addForeignKeys(std::uint32_t table);
    void addIndexesAndChecks(std::uint32_t table);
    void tellNames();
    void tellUnknownTypes();

    std::string constraint(std::string_view prefix, std::uint32_t table, std::string_view rest) {
        return relations_.make(std::string(prefix) + schema_.tables[table].name.text + "_" + std::string(rest)).text;
    }
    std::string joinedNames(std::uint32_t table, const Columns& columns) const {
        std::string text;
        for (const std::uint32_t column : columns) {
            text += (text.empty() ? "" : "_") + schema_.tables[table].columns[column].name.text;
        }
        return text;
    }
    static Columns columnsOf(const Span& span) {
        Columns columns(span.count);
        for (std::uint32_t index = 0; index < span.count; ++index) {
            columns[index] = span.first + index;
        }
        return columns;
    }
    Columns columnsOf(std::uint32_t table, const std::vector<std::uint32_t>& attributes) const {
        Columns columns;
        for (const std::uint32_t attribute : attributes) {
            columns.push_back(layouts_[table].attributes[attribute].first);
        }
        return columns;
    }

    Plan plan_;
    const ClassTables& classes_;
    const SchemaChoices& choices_;
    const ElementIds& ids_;
    Schema& schema_;
    NameSpace relations_;
    std::vector<std::uint32_t> byId_;  // tables by the ids of their elements: those of classes, then the others
    std::vector<std::uint32_t> order_; // tables behind those whose keys they inherit
    std::vector<Layout> layouts_;
    std::vector<std::vector<ColumnType>> keyTypes_; // of the primary keys
    std::vector<Columns> keys_;                     // likewise their columns
    std::vector<bool> isMade_;
    std::vector<std::unique_ptr<NameSpace>> names_;
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> foreignKeys_; // by table, indexes into the plan's
};

void Maker::sortById() {
    std::vector<std::pair<std::string, std::uint32_t>> keyed;
    for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
        const bool isJoin = plan_.tables[table].rule == Rule::joinTable;
        keyed.emplace_back((isJoin ? "2" : "1") + ids_.idOf(*plan_.tables[table].element), table);
    }
    std::ranges::sort(keyed);
    for (auto& [id, table] : keyed) {
        byId_.push_back(table);
    }
}

void Maker::nameTables() {
    const std::size_t count = plan_.tables.size();
    schema_.tables.resize(count);
    std::vector<std::string> texts(count);
    std::unordered_map<std::string, std::vector<std::uint32_t>> byName;
    for (std::uint32_t table = 0; table < count; ++table) {
        const PlannedTable& planned = plan_.tables[table];
        if (planned.rule != Rule::joinTable) {
            texts[table] = styled(utf8(planned.element->getName()), choices_.names);
            byName[text::repairedUtf8(texts[table])].push_back(table);
            continue;
        }
        std::string text = utf8(planned.element->getName());
        if (text.empty()) {
            for (const KelAssociationRole* role :
                 static_cast<const KelAssociation*>(planned.element)->associationRoles()) {
                text += (text.empty() ? "" : "_") + utf8(role->getAssociatedClass()->getName());
            }
        }
        texts[table] = styled(text, choices_.names);
    }
    std::vector<bool> hasPackage(count, false);
    for (const auto& [name, tables] : byName) {
        if (tables.size() < 2) {
            continue;
        }
        const auto withPackage = [&](std::uint32_t table) {
            const auto* package = static_cast<const KelClass*>(plan_.tables[table].element)->getDesignPackage();
            return package == nullptr ? name : styled(utf8(package->getName()), choices_.names) + "_" + name;
        };
        std::set<std::string> different;
        for (const std::uint32_t table : tables) {
            different.insert(withPackage(table));
        }
        for (const std::uint32_t table : tables) {
            texts[table] = different.size() == tables.size()
                               ? withPackage(table)
                               : styled(qualifiedName(*plan_.tables[table].element), choices_.names);
            hasPackage[table] = true;
        }
    }
    for (const std::uint32_t table : byId_) {
        Table& made = schema_.tables[table];
        made.name = relations_.make(texts[table]);
        made.name.change.hasPackage = hasPackage[table];
        made.rule = plan_.tables[table].rule;
        made.element = plan_.tables[table].element;
        for (const std::uint32_t number : plan_.tables[table].classes) {
            made.classes.push_back(&classes_.at(number));
        }
    }
}

void Maker::orderTables() {
    std::vector<bool> isDone(plan_.tables.size(), false);
    for (std::uint32_t start = 0; start < plan_.tables.size(); ++start) {
        std::vector<std::uint32_t> path;
        std::uint32_t table = start;
        while (table != noTable && !isDone[table]) {
            isDone[table] = true;
            path.push_back(table);
            table = plan_.tables[table].supertable;
        }
        order_.insert(order_.end(), path.rbegin(), path.rend());
    }
    layouts_.resize(plan_.tables.size());
    keyTypes_.resize(plan_.tables.size());
    keys_.resize(plan_.tables.size());
    isMade_.resize(plan_.tables.size());
    names_.resize(plan_.tables.size());
}

Column& Maker::add(std::uint32_t table, Rule rule, const KelObject* element, const ColumnType& type) {
    Column& column = schema_.tables[table].columns.emplace_back();
    column.rule = rule;
    column.element = element;
    column.type = type;
    return column;
}

/// What others need to refer to a table: how many columns its key has, and of what types.
void Maker::layKey(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    std::vector<ColumnType>& types = keyTypes_[table];
    if (planned.keyPlan == KeyPlan::made) {
        types = {madeKeyType};
        isMade_[table] = true;
        Column& column = add(table, Rule::madeKey, planned.element, madeKeyType);
        column.isGenerated = true;
    } else if (planned.keyPlan == KeyPlan::inherited) {
        types = keyTypes_[planned.supertable];
        isMade_[table] = isMade_[planned.supertable];
        for (const ColumnType& type : types) {
            add(table, Rule::inheritedKey, planned.inheritance, type);
        }
    } else if (planned.keyPlan == KeyPlan::natural) {
        for (const std::uint32_t attribute : planned.primary.columns) {
            types.push_back(planned.attributes[attribute].type);
        }
    }
    layouts_[table].key = {0, static_cast<std::uint32_t>(schema_.tables[table].columns.size())};
}

Maker::Span Maker::lay(std::uint32_t table, const PlannedColumn& planned) {
    const auto first = static_cast<std::uint32_t>(schema_.tables[table].columns.size());
    if (planned.target == noTable) {
        Column& column = add(table, planned.rule, planned.element, planned.type);
        column.byDefault = planned.byDefault;
        column.values = planned.values;
        return {first, 1};
    }
    for (const ColumnType& type : keyTypes_[planned.target]) {
        add(table, planned.rule, planned.element, type).isNotNull = planned.isNotNull;
    }
    return {first, static_cast<std::uint32_t>(keyTypes_[planned.target].size())};
}

void Maker::layRest(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    Layout& layout = layouts_[table];
    if (planned.hasKind) {
        layout.kind = {static_cast<std::uint32_t>(schema_.tables[table].columns.size()), 1};
        setKind(add(table, Rule::kindColumn, planned.element, ColumnType()), planned);
    }
    for (const PlannedColumn& attribute : planned.attributes) {
        layout.attributes.push_back(lay(table, attribute));
    }
    for (const PlannedColumn& reference : planned.references) {
        layout.references.push_back(lay(table, reference));
    }
    Columns& key = keys_[table];
    if (planned.keyPlan == KeyPlan::natural) {
        key = columnsOf(table, planned.primary.columns);
    } else if (planned.keyPlan == KeyPlan::references) {
        for (const Span& span : layout.references) {
            const Columns columns = columnsOf(span);
            key.insert(key.end(), columns.begin(), columns.end());
        }
    } else {
        key = columnsOf(layout.key);
    }
}

/// The values are the names of the classes that have objects; qualified ones where several have the name.
void Maker::setKind(Column& column, const PlannedTable& planned) {
    std::vector<const KelClass*> classes;
    std::unordered_map<std::string, int> counts;
    for (const bool areAbstract : {false, true}) {
        for (const std::uint32_t number : planned.classes) {
            const KelClass& one = classes_.at(number);
            if (one.isAbstract == areAbstract) {
                classes.push_back(&one);
                ++counts[utf8(one.getName())];
            }
        }
        if (!classes.empty()) {
            break;
        }
    }
    Values values;
    for (const KelClass* one : classes) {
        const std::string name = utf8(one->getName());
        const std::string longer = qualifiedName(*one);
        const bool isPlain = !name.empty() && counts[name] == 1;
        values.push_back(isPlain ? name : counts[name] == 1 ? longer : longer + " " + ids_.idOf(*one));
    }
    column.isNotNull = true;
    column.values = schema_.values.emplace_back(std::make_unique<Values>(std::move(values))).get();
}

/// Indexes of the attributes in the order of their elements' ids: of those that become several columns, or of the
/// others.
std::vector<std::uint32_t> Maker::attributesById(const PlannedTable& planned, bool areSplit) const {
    std::vector<std::pair<std::string, std::uint32_t>> keyed;
    for (std::uint32_t index = 0; index < planned.attributes.size(); ++index) {
        const PlannedColumn& attribute = planned.attributes[index];
        const bool isSplit = attribute.target != noTable && keyTypes_[attribute.target].size() != 1;
        if (isSplit == areSplit) {
            keyed.emplace_back(ids_.idOf(*attribute.element), index);
        }
    }
    std::ranges::sort(keyed);
    std::vector<std::uint32_t> order;
    std::ranges::transform(keyed, std::back_inserter(order), &std::pair<std::string, std::uint32_t>::second);
    return order;
}

void Maker::nameOwnColumns(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    std::vector<Column>& columns = schema_.tables[table].columns;
    names_[table] = std::make_unique<NameSpace>(NameSpace::Kind::columns, choices_.names);
    NameSpace& names = *names_[table];
    for (const std::uint32_t index : attributesById(planned, false)) {
        columns[layouts_[table].attributes[index].first].name =
            names.make(styled(planned.attributes[index].name, choices_.names));
    }
    if (planned.keyPlan == KeyPlan::made) {
        columns[layouts_[table].key.first].name = names.make(schema_.tables[table].name.text + "_id");
    } else if (planned.keyPlan == KeyPlan::inherited) {
        const Columns& above = keys_[planned.supertable];
        for (std::uint32_t index = 0; index < layouts_[table].key.count; ++index) {
            columns[index].name = names.make(schema_.tables[planned.supertable].columns[above[index]].name.text);
        }
    }
    if (planned.hasKind) {
        columns[layouts_[table].kind.first].name = names.make("kind");
    }
}

void Maker::nameReference(std::uint32_t table, const PlannedColumn& planned, const Span& span) {
    std::vector<Column>& columns = schema_.tables[table].columns;
    const std::string base = styled(planned.name, choices_.names);
    for (std::uint32_t index = 0; index < span.count; ++index) {
        const std::uint32_t keyColumn = keys_[planned.target][index];
        const std::string& keyName = schema_.tables[planned.target].columns[keyColumn].name.text;
        columns[span.first + index].name = names_[table]->make(base + "_" + (isMade_[planned.target] ? "id" : keyName));
    }
}

void Maker::nameReferences(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    for (const std::uint32_t index : attributesById(planned, true)) {
        nameReference(table, planned.attributes[index], layouts_[table].attributes[index]);
    }
    std::vector<std::pair<std::string, std::uint32_t>> keyed;
    for (std::uint32_t index = 0; index < planned.references.size(); ++index) {
        const PlannedColumn& reference = planned.references[index];
        const std::string_view rank = reference.rule == Rule::supertypeReference ? "1" : "2";
        keyed.emplace_back(std::string(rank) + ids_.idOf(*reference.element), index);
    }
    std::ranges::sort(keyed);
    for (const auto& [id, index] : keyed) {
        nameReference(table, planned.references[index], layouts_[table].references[index]);
    }
}

/// PostgreSQL names the sequence of a generated column so, as long as no table has the name.
void Maker::reserveSequences() {
    for (const std::uint32_t table : byId_) {
        for (const std::uint32_t column : keys_[table]) {
            const Column& made = schema_.tables[table].columns[column];
            const std::string sequence = schema_.tables[table].name.text + "_" + made.name.text + "_seq";
            if (made.isGenerated && sequence.size() <= choices_.names.longest) {
                static_cast<void>(relations_.make(sequence));
            }
        }
    }
}

void Maker::addUnique(std::uint32_t table, Columns columns, const std::string& name, Rule rule,
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

void Maker::addKeys(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    Table& made = schema_.tables[table];
    const KelObject* element = planned.primary.key != nullptr ? planned.primary.key : planned.element;
    made.primary = Key{.name = relations_.make("pk_" + made.name.text).text,
                       .columns = keys_[table],
                       .rule = planned.keyPlan == KeyPlan::made        ? Rule::madeKey
                               : planned.keyPlan == KeyPlan::inherited ? Rule::inheritedKey
                               : planned.keyPlan == KeyPlan::natural   ? Rule::primaryKey
                                                                       : Rule::joinTable,
                       .element = element};
    for (const std::uint32_t column : keys_[table]) {
        made.columns[column].isNotNull = true;
    }
    for (const PlannedKey& unique : planned.uniques) {
        Columns columns = columnsOf(table, unique.columns);
        const std::string name = unique.key->getName().isEmpty() ? joinedNames(table, columns)
                                                                 : styled(utf8(unique.key->getName()), choices_.names);
        addUnique(table, std::move(columns), name, Rule::candidateKey, unique.key);
    }
    for (std::size_t index = 0; index < planned.references.size(); ++index) {
        const PlannedColumn& reference = planned.references[index];
        if (reference.isUnique) {
            const Columns columns = columnsOf(layouts_[table].references[index]);
            const bool isSupertype = reference.rule == Rule::supertypeReference;
            addUnique(table, columns, styled(reference.name, choices_.names),
                      isSupertype ? Rule::supertypeReference : Rule::oneToOne, reference.element);
        }
    }
}

void Maker::addReference(std::uint32_t table, const PlannedColumn& planned, const Span& span) {
    schema_.tables[table].references.push_back({.name = constraint("fk_", table, styled(planned.name, choices_.names)),
                                                .columns = columnsOf(span),
                                                .table = planned.target,
                                                .keyColumns = keys_[planned.target],
                                                .cascades = planned.cascades,
                                                .rule = planned.rule,
                                                .element = planned.element});
}

void Maker::addForeignKeys(std::uint32_t table) {
    for (const std::uint32_t index : foreignKeys_[table]) {
        const PlannedForeignKey& key = plan_.foreignKeys[index];
        const Columns columns = columnsOf(table, key.columns);
        const std::string name = key.key->getName().isEmpty() ? joinedNames(table, columns)
                                                              : styled(utf8(key.key->getName()), choices_.names);
        schema_.tables[table].references.push_back({.name = constraint("fk_", table, name),
                                                    .columns = columns,
                                                    .table = key.targetTable,
                                                    .keyColumns = columnsOf(key.targetTable, key.targetColumns),
                                                    .cascades = key.cascades,
                                                    .rule = Rule::foreignKey,
                                                    .element = key.key});
    }
}

void Maker::addReferences(std::uint32_t table) {
    if (foreignKeys_.empty()) {
        for (std::uint32_t index = 0; index < plan_.foreignKeys.size(); ++index) {
            foreignKeys_[plan_.foreignKeys[index].table].push_back(index);
        }
    }
    const PlannedTable& planned = plan_.tables[table];
    const Layout& layout = layouts_[table];
    if (planned.keyPlan == KeyPlan::inherited) {
        Table& made = schema_.tables[table];
        made.references.push_back({.name = constraint("fk_", table, schema_.tables[planned.supertable].name.text),
                                   .columns = keys_[table],
                                   .table = planned.supertable,
                                   .keyColumns = keys_[planned.supertable],
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

void Maker::addIndexesAndChecks(std::uint32_t table) {
    Table& made = schema_.tables[table];
    const auto mark = [&](const Columns& columns) {
        for (const std::uint32_t column : columns) {
            made.columns[column].isKey = true;
        }
    };
    std::vector<const Columns*> begun{&made.primary->columns}; // what an index begins with
    std::ranges::for_each(made.uniques, [&](const Key& key) { begun.push_back(&key.columns); });
    std::set<Columns> indexed;
    for (const Reference& reference : made.references) {
        mark(reference.columns);
        const bool hasIndex = std::ranges::any_of(begun, [&](const Columns* columns) {
            return columns->size() >= reference.columns.size() &&
                   std::equal(reference.columns.begin(), reference.columns.end(), columns->begin());
        });
        if (!hasIndex && indexed.insert(reference.columns).second) {
            made.indexes.push_back(
                {constraint("ix_", table, joinedNames(table, reference.columns)), reference.columns});
        }
    }
    std::ranges::for_each(begun, [&](const Columns* columns) { mark(*columns); });
    for (Column& column : made.columns) {
        if (column.values != nullptr) {
            column.check = constraint("ck_", table, column.name.text);
        }
    }
}

void Maker::tellNames() {
    for (const Table& table : schema_.tables) {
        if (table.name.change.isAny()) {
            schema_.decisions.push_back({Topic::name, table.name.text + " is " + shownName(*table.element) + ", " +
                                                          changeText(table.name.change)});
        }
        for (const Column& column : table.columns) {
            if (column.name.change.isAny()) {
                schema_.decisions.push_back({Topic::name, table.name.text + "." + column.name.text + " is " +
                                                              shownName(*column.element) + ", " +
                                                              changeText(column.name.change)});
            }
        }
    }
}

void Maker::tellUnknownTypes() {
    for (const auto& [name, columns] : plan_.unknownTypes) {
        std::string text = name.empty() ? "without a type:" : name + ":";
        bool isFirst = true;
        for (const auto& [table, attribute] : columns) {
            const std::uint32_t column = layouts_[table].attributes[attribute].first;
            text += (isFirst ? " " : ", ") + schema_.tables[table].name.text + "." +
                    schema_.tables[table].columns[column].name.text;
            isFirst = false;
        }
        schema_.decisions.push_back({Topic::unknownType, std::move(text)});
    }
}

} // namespace

Schema makeSchema(const KelModel& model, const SchemaChoices& choices, const ElementIds& ids, Omissions& omissions) {
    Schema schema;
    const ClassTables classes(model, choices.kinds, choices.tables, omissions, schema.decisions);
    Plan plan = planTables(model, classes, choices, schema, omissions);
    planReferences(classes, choices, plan, schema, omissions);
    Maker(std::move(plan), classes, choices, ids, schema).make();
    std::ranges::stable_sort(schema.decisions, {}, &Decision::topic);
    return schema;
}

} // namespace exporter::sql
