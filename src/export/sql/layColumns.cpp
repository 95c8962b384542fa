#include "export/sql/Layout.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "text/utf8.h"

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <tsl/robin_map.h>
#include <tuple>
#include <unordered_map>

namespace exporter::sql {

namespace {

const ColumnType madeKeyType{.family = Family::bigInteger, .length = 0, .scale = 0, .sql = {}};

/// An index by a rank and the key of an element.
using Ranked = std::tuple<bool, std::string_view, std::uint32_t>;

class ColumnMaker {
public:
    ColumnMaker(const Plan& plan, const ClassTables& classes, const NameStyle& style, NamingOrder& order,
                NameSpace& relations, Schema& schema)
        : plan_(plan), classes_(classes), style_(style), order_(order), relations_(relations), schema_(schema) {}

    Layout make() {
        nameTables();
        orderTables();
        for (const std::uint32_t table : ordered_) {
            layKey(table);
        }
        NameSpace names(NameSpace::Kind::columns, style_); // of one table after the other
        for (const std::uint32_t table : ordered_) {
            layRest(table);
            if (hasNamesLeft(table)) {
                names_[table] = std::make_unique<NameSpace>(NameSpace::Kind::columns, style_);
                nameOwnColumns(table, *names_[table]);
            } else {
                names.clear();
                nameOwnColumns(table, names);
            }
        }
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            if (names_[table] != nullptr) {
                nameReferences(table);
                names_[table].reset();
            }
        }
        return {std::move(layouts_)};
    }

private:
    void nameTables();
    void orderTables();
    void layKey(std::uint32_t table);
    void layRest(std::uint32_t table);
    ColumnSpan lay(std::uint32_t table, const PlannedColumn& planned);
    Column& add(std::uint32_t table, Rule rule, const KelObject* element, const ColumnType& type);
    void setKind(Column& column, const PlannedTable& planned);
    [[nodiscard]] std::vector<std::uint32_t> attributesById(const PlannedTable& planned, bool areSplit) const;
    /// Whether it becomes several columns, or none.
    [[nodiscard]] bool isSplit(const PlannedColumn& attribute) const {
        return attribute.target != noTable && layouts_[attribute.target].keyTypes.size() != 1;
    }
    void nameOwnColumns(std::uint32_t table, NameSpace& names);
    void makeOwnNames(std::uint32_t table, NameSpace& names);
    [[nodiscard]] bool hasNamesLeft(std::uint32_t table) const;
    void nameReferences(std::uint32_t table);
    void makeReferenceNames(std::uint32_t table);
    void nameReference(std::uint32_t table, const PlannedColumn& planned, const ColumnSpan& span);

    const Plan& plan_;
    const ClassTables& classes_;
    const NameStyle& style_;
    NamingOrder& order_;
    NameSpace& relations_;
    Schema& schema_;
    std::vector<std::uint32_t> ordered_; // tables behind those whose keys they inherit
    std::vector<TableLayout> layouts_;
    std::vector<std::unique_ptr<NameSpace>> names_; // of tables with columns that wait for the names of keys
};

void ColumnMaker::nameTables() {
    const std::size_t count = plan_.tables.size();
    schema_.tables.resize(count);
    std::vector<std::string> texts(count);
    std::deque<std::string> repaired;
    tsl::robin_map<std::string_view, std::uint32_t, KelTextHash> firstOf; // by name
    std::map<std::uint32_t, std::vector<std::uint32_t>> sameName;         // by the first of several
    firstOf.reserve(count);
    for (std::uint32_t table = 0; table < count; ++table) {
        const PlannedTable& planned = plan_.tables[table];
        if (planned.rule != Rule::joinTable) {
            std::string_view name = planned.element->getName().view();
            if (!text::isValidUtf8(name)) {
                name = repaired.emplace_back(text::repairedUtf8(name));
            }
            texts[table] = styled(name, style_);
            if (const auto [first, isNew] = firstOf.try_emplace(name, table); !isNew) {
                sameName.try_emplace(first->second, 1, first->second).first->second.push_back(table);
            }
            continue;
        }
        std::string text = utf8(planned.element->getName());
        if (text.empty()) {
            for (const KelAssociationRole* role :
                 static_cast<const KelAssociation*>(planned.element)->associationRoles()) {
                text += (text.empty() ? "" : "_") + utf8(role->getAssociatedClass()->getName());
            }
        }
        texts[table] = styled(text, style_);
    }
    std::vector<bool> hasPackage(count, false);
    for (const auto& row : sameName) {
        const std::vector<std::uint32_t>& tables = row.second;
        const std::string name = texts[tables.front()];
        const auto withPackage = [&](std::uint32_t table) {
            const auto* package = static_cast<const KelClass*>(plan_.tables[table].element)->getDesignPackage();
            return package == nullptr ? name : styled(utf8(package->getName()), style_) + "_" + name;
        };
        std::set<std::string> different;
        for (const std::uint32_t table : tables) {
            different.insert(withPackage(table));
        }
        for (const std::uint32_t table : tables) {
            texts[table] = different.size() == tables.size()
                               ? withPackage(table)
                               : styled(qualifiedName(*plan_.tables[table].element), style_);
            hasPackage[table] = true;
        }
    }
    do {
        relations_.reserve(3 * count); // each table, its primary key and the sequence of that
        for (const std::uint32_t table : order_.tablesOf(plan_)) {
            schema_.tables[table].name = relations_.make(texts[table]);
        }
    } while (order_.mustRepeat(relations_));
    for (std::uint32_t table = 0; table < count; ++table) {
        Table& made = schema_.tables[table];
        made.name.change.hasPackage = hasPackage[table];
        made.rule = plan_.tables[table].rule;
        made.element = plan_.tables[table].element;
        for (const std::uint32_t number : plan_.tables[table].classes) {
            made.classes.push_back(&classes_.at(number));
        }
    }
}

void ColumnMaker::orderTables() {
    std::vector<bool> isDone(plan_.tables.size(), false);
    ordered_.reserve(plan_.tables.size());
    std::vector<std::uint32_t> path;
    for (std::uint32_t start = 0; start < plan_.tables.size(); ++start) {
        path.clear();
        std::uint32_t table = start;
        while (table != noTable && !isDone[table]) {
            isDone[table] = true;
            path.push_back(table);
            table = plan_.tables[table].supertable;
        }
        ordered_.insert(ordered_.end(), path.rbegin(), path.rend());
    }
    layouts_.resize(plan_.tables.size());
    names_.resize(plan_.tables.size());
}

Column& ColumnMaker::add(std::uint32_t table, Rule rule, const KelObject* element, const ColumnType& type) {
    Column& column = schema_.tables[table].columns.emplace_back();
    column.rule = rule;
    column.element = element;
    column.type = type;
    return column;
}

/// The data that a reference to a table needs: how many columns its key has, and of what types.
void ColumnMaker::layKey(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    std::vector<ColumnType>& types = layouts_[table].keyTypes;
    schema_.tables[table].columns.reserve(1 + planned.attributes.size() + planned.references.size());
    if (planned.keyPlan == KeyPlan::made) {
        types = {madeKeyType};
        layouts_[table].isMade = true;
        Column& column = add(table, Rule::madeKey, planned.element, madeKeyType);
        column.isGenerated = true;
    } else if (planned.keyPlan == KeyPlan::inherited) {
        types = layouts_[planned.supertable].keyTypes;
        layouts_[table].isMade = layouts_[planned.supertable].isMade;
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

ColumnSpan ColumnMaker::lay(std::uint32_t table, const PlannedColumn& planned) {
    const auto first = static_cast<std::uint32_t>(schema_.tables[table].columns.size());
    if (planned.target == noTable) {
        Column& column = add(table, planned.rule, planned.element, planned.type);
        column.byDefault = planned.byDefault;
        column.values = planned.values;
        return {first, 1};
    }
    for (const ColumnType& type : layouts_[planned.target].keyTypes) {
        add(table, planned.rule, planned.element, type).isNotNull = planned.isNotNull;
    }
    return {first, static_cast<std::uint32_t>(layouts_[planned.target].keyTypes.size())};
}

void ColumnMaker::layRest(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    TableLayout& layout = layouts_[table];
    if (planned.hasKind) {
        layout.kind = {static_cast<std::uint32_t>(schema_.tables[table].columns.size()), 1};
        setKind(add(table, Rule::kindColumn, planned.element, ColumnType()), planned);
    }
    layout.attributes.reserve(planned.attributes.size());
    for (const PlannedColumn& attribute : planned.attributes) {
        layout.attributes.push_back(lay(table, attribute));
    }
    for (const PlannedColumn& reference : planned.references) {
        layout.references.push_back(lay(table, reference));
    }
    Columns& key = layouts_[table].keyColumns;
    if (planned.keyPlan == KeyPlan::natural) {
        key = layout.columnsOf(planned.primary.columns);
    } else if (planned.keyPlan == KeyPlan::references) {
        for (const ColumnSpan& span : layout.references) {
            const Columns columns = span.columns();
            key.insert(key.end(), columns.begin(), columns.end());
        }
    } else {
        key = layout.key.columns();
    }
}

/// The values are the names of the classes that have objects; qualified ones where several have the name.
void ColumnMaker::setKind(Column& column, const PlannedTable& planned) {
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
        values.push_back(isPlain ? name : counts[name] == 1 ? longer : longer + " " + order_.ids().idOf(*one));
    }
    column.isNotNull = true;
    column.values = schema_.values.emplace_back(std::make_unique<Values>(std::move(values))).get();
}

/// Indexes of the attributes in the order of naming: of those that become several columns, or of the
/// others.
std::vector<std::uint32_t> ColumnMaker::attributesById(const PlannedTable& planned, bool areSplit) const {
    std::vector<std::pair<std::string_view, std::uint32_t>> keyed;
    for (std::uint32_t index = 0; index < planned.attributes.size(); ++index) {
        const PlannedColumn& attribute = planned.attributes[index];
        if (isSplit(attribute) == areSplit) {
            keyed.emplace_back(order_.keyOf(*attribute.element), index);
        }
    }
    std::ranges::sort(keyed);
    std::vector<std::uint32_t> order;
    std::ranges::transform(keyed, std::back_inserter(order), &std::pair<std::string_view, std::uint32_t>::second);
    return order;
}

void ColumnMaker::nameOwnColumns(std::uint32_t table, NameSpace& names) {
    do {
        makeOwnNames(table, names);
    } while (order_.mustRepeat(names));
}

void ColumnMaker::makeOwnNames(std::uint32_t table, NameSpace& names) {
    const PlannedTable& planned = plan_.tables[table];
    std::vector<Column>& columns = schema_.tables[table].columns;
    for (const std::uint32_t index : attributesById(planned, false)) {
        columns[layouts_[table].attributes[index].first].name =
            names.make(styled(planned.attributes[index].name, style_));
    }
    if (planned.keyPlan == KeyPlan::made) {
        columns[layouts_[table].key.first].name = names.make(schema_.tables[table].name.text + "_id");
    } else if (planned.keyPlan == KeyPlan::inherited) {
        const Columns& above = layouts_[planned.supertable].keyColumns;
        for (std::uint32_t index = 0; index < layouts_[table].key.count; ++index) {
            columns[index].name = names.make(schema_.tables[planned.supertable].columns[above[index]].name.text);
        }
    }
    if (planned.hasKind) {
        columns[layouts_[table].kind.first].name = names.make("kind");
    }
}

void ColumnMaker::nameReference(std::uint32_t table, const PlannedColumn& planned, const ColumnSpan& span) {
    std::vector<Column>& columns = schema_.tables[table].columns;
    const std::string base = styled(planned.name, style_);
    for (std::uint32_t index = 0; index < span.count; ++index) {
        const std::uint32_t keyColumn = layouts_[planned.target].keyColumns[index];
        const std::string& keyName = schema_.tables[planned.target].columns[keyColumn].name.text;
        columns[span.first + index].name =
            names_[table]->make(base + "_" + (layouts_[planned.target].isMade ? "id" : keyName));
    }
}

/// Whether columns wait for the names of keys.
bool ColumnMaker::hasNamesLeft(std::uint32_t table) const {
    const PlannedTable& planned = plan_.tables[table];
    return !planned.references.empty() ||
           std::ranges::any_of(planned.attributes, [this](const PlannedColumn& one) { return isSplit(one); });
}

void ColumnMaker::nameReferences(std::uint32_t table) {
    makeReferenceNames(table);
    if (order_.mustRepeat(*names_[table])) {
        makeOwnNames(table, *names_[table]); // none of these clash, so none becomes another
        makeReferenceNames(table);
    }
}

void ColumnMaker::makeReferenceNames(std::uint32_t table) {
    const PlannedTable& planned = plan_.tables[table];
    for (const std::uint32_t index : attributesById(planned, true)) {
        nameReference(table, planned.attributes[index], layouts_[table].attributes[index]);
    }
    std::vector<Ranked> ranked;
    for (std::uint32_t index = 0; index < planned.references.size(); ++index) {
        const PlannedColumn& reference = planned.references[index];
        ranked.emplace_back(reference.rule != Rule::supertypeReference, order_.keyOf(*reference.element), index);
    }
    std::ranges::sort(ranked);
    for (const auto& [isOther, id, index] : ranked) {
        nameReference(table, planned.references[index], layouts_[table].references[index]);
    }
}

} // namespace

std::vector<std::uint32_t> NamingOrder::tablesOf(const Plan& plan) const {
    std::vector<Ranked> ranked;
    ranked.reserve(plan.tables.size());
    for (std::uint32_t table = 0; table < plan.tables.size(); ++table) {
        const bool isJoin = plan.tables[table].rule == Rule::joinTable;
        ranked.emplace_back(isJoin, keyOf(*plan.tables[table].element), table);
    }
    if (!std::ranges::is_sorted(ranked)) { // as quids often are, which a tool counts up
        std::ranges::sort(ranked);
    }
    std::vector<std::uint32_t> tables;
    tables.reserve(ranked.size());
    for (const auto& [isJoin, key, table] : ranked) {
        tables.push_back(table);
    }
    return tables;
}

bool NamingOrder::mustRepeat(NameSpace& names) {
    if (ids_ != nullptr || !names.hasNumbers()) {
        return false;
    }
    ids_ = &findIds_();
    names.clear();
    return true;
}

const ElementIds& NamingOrder::ids() {
    ids_ = ids_ != nullptr ? ids_ : &findIds_();
    return *ids_;
}

Layout layColumns(const Plan& plan, const ClassTables& classes, const NameStyle& style, NamingOrder& order,
                  NameSpace& relations, Schema& schema) {
    return ColumnMaker(plan, classes, style, order, relations, schema).make();
}

} // namespace exporter::sql
