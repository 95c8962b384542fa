#include "export/sql/Plan.h"

#include "export/ClassNames.h"
#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/relationships.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelTypeValue.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace exporter::sql {

namespace {

/// The fewest that the systems allow: Oracle has 1,000 columns a table, and 32 a key as PostgreSQL has.
constexpr std::size_t mostColumns = 1'000;
constexpr std::size_t mostKeyColumns = 32;
constexpr std::size_t longestValue = 1'000; // bytes of a value of a CHECK

constexpr Omission derived{"derived attribute", "derived attributes", "the value is computed"};
constexpr Omission shared{"static attribute", "static attributes", "the value is not one of a row"};
constexpr Omission tooMany{"attribute", "attributes", "a table has at most 1,000 columns"};
constexpr Omission tooManyReferences{"association", "associations", "a table has at most 1,000 columns"};
constexpr Omission fewEnds{"association", "associations", "there are fewer than two ends"};
constexpr Omission unstoredEnd{"association", "associations", "a class at an end is no table"};
constexpr Omission unasked{"multiplicity", "multiplicities", "a table cannot demand so many rows"};
constexpr Omission unusedEnumeration{"enumeration", "enumerations", "no column has its values"};
constexpr Omission unusableKey{"key", "keys", "the attributes are no columns of the table"};

std::string utf8(const KelString& text) {
    return text::repairedUtf8(text.view());
}

class Planner {
public:
    Planner(const KelModel& model, const ClassTables& classes, const SchemaChoices& choices, Schema& schema,
            Omissions& omissions)
        : classes_(classes), choices_(choices), schema_(schema), omissions_(omissions), classNames_(model),
          tableOf_(classes.count(), noTable), isUsed_(classes.count(), false) {}

    Plan plan() {
        planTables();
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            addColumns(table);
        }
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            addKeys(table);
        }
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            addSupertypes(table);
            addForeignKeys(table);
        }
        for (const KelAssociation* association : classes_.associations()) {
            addAssociation(*association);
        }
        for (std::uint32_t number = 0; number < classes_.count(); ++number) {
            if (classes_.isEnumeration(number) && !isUsed_[number]) {
                omissions_.add(unusedEnumeration);
            }
        }
        return std::move(plan_);
    }

private:
    [[nodiscard]] bool isJoined() const { return choices_.inheritance == "joined"; }
    [[nodiscard]] bool isSingle() const { return choices_.inheritance == "single"; }
    [[nodiscard]] bool isConcrete() const { return choices_.inheritance == "concrete"; }

    /// Whether nothing was told of the object yet; several tables may have its columns.
    bool isNew(const KelObject& object) { return told_.insert(&object).second; }
    void decide(Topic topic, std::string text) { schema_.decisions.push_back({topic, std::move(text)}); }

    void planTables();
    void addColumns(std::uint32_t table);
    void addAttributes(std::uint32_t table, std::uint32_t owner, Rule rule);
    void addAttribute(std::uint32_t table, const KelAttribute& attribute, Rule rule);
    void setType(PlannedColumn& column, const KelAttribute& attribute, std::uint32_t table);
    const Values* valuesOfClass(std::uint32_t number);
    const Values* valuesOfType(const KelType* type);
    const Values* addValues(Values values, const std::string& name);
    void addKeys(std::uint32_t table);
    std::optional<std::vector<std::uint32_t>> columnsOf(const KelKey& key, std::uint32_t table) const;
    void addSupertypes(std::uint32_t table);
    void addForeignKeys(std::uint32_t table);
    void addForeignKey(std::uint32_t table, const KelForeignKey& key);
    void addAssociation(const KelAssociation& association);
    void addLink(const KelAssociation& association, std::span<KelAssociationRole* const> roles);
    void addJoinTable(const KelAssociation& association, std::span<KelAssociationRole* const> roles);
    void addReference(std::uint32_t table, PlannedColumn reference);
    /// The tables of the class and, when each class has its own with all inherited columns, of its subclasses.
    std::vector<std::uint32_t> tablesWithColumnsOf(std::uint32_t number) const;

    const ClassTables& classes_;
    const SchemaChoices& choices_;
    Schema& schema_;
    Omissions& omissions_;
    ClassNames classNames_;
    Plan plan_;
    std::vector<std::uint32_t> tableOf_;                    // by class: the table with its objects
    std::vector<bool> isUsed_;                              // by class: an enumeration of a column
    std::vector<std::vector<std::uint32_t>> belowInTables_; // by class, concrete: tables that inherit its columns
    std::unordered_map<const void*, const Values*> values_; // by class or type
    std::unordered_set<const KelObject*> made_;             // foreign keys that are
    std::unordered_set<const KelObject*> told_;
};

void Planner::planTables() {
    std::vector<std::uint32_t> order;
    for (std::uint32_t number = 0; number < classes_.count(); ++number) {
        const bool isTable = classes_.isStored(number) && (!isSingle() || classes_.rootOf(number) == number) &&
                             (!isConcrete() || !classes_.at(number).isAbstract);
        if (!isTable) {
            continue;
        }
        PlannedTable table;
        table.element = &classes_.at(number);
        tableOf_[number] = static_cast<std::uint32_t>(plan_.tables.size());
        table.rule = isJoined() ? Rule::classTable : isSingle() ? Rule::treeTable : Rule::concreteTable;
        table.classes = {number};
        if (isSingle()) { // the whole tree, supertypes first
            std::vector<std::uint32_t> left{number};
            table.classes.clear();
            while (!left.empty()) {
                const std::uint32_t next = left.back();
                left.pop_back();
                table.classes.push_back(next);
                tableOf_[next] = tableOf_[number];
                const std::vector<std::uint32_t>& below = classes_.firstSubtypes(next);
                left.insert(left.end(), below.rbegin(), below.rend());
            }
            table.hasKind = table.classes.size() > 1;
        }
        plan_.tables.push_back(std::move(table));
    }
    if (!isConcrete()) {
        return;
    }
    belowInTables_.resize(classes_.count());
    for (std::uint32_t number = 0; number < classes_.count(); ++number) {
        if (!classes_.isStored(number)) {
            continue;
        }
        if (tableOf_[number] == noTable) {
            decide(Topic::tables, qualifiedName(classes_.at(number)) + " is abstract and no table");
            continue;
        }
        for (const std::uint32_t above : classes_.lineOf(number)) {
            belowInTables_[above].push_back(tableOf_[number]);
        }
    }
}

std::vector<std::uint32_t> Planner::tablesWithColumnsOf(std::uint32_t number) const {
    if (isConcrete()) {
        return belowInTables_[number];
    }
    return {tableOf_[number]};
}

void Planner::addColumns(std::uint32_t table) {
    const std::vector<std::uint32_t> rows = plan_.tables[table].classes;
    std::vector<std::uint32_t> owners;
    for (const std::uint32_t number : rows) {
        const std::vector<std::uint32_t> line = isConcrete() ? classes_.lineOf(number) : std::vector{number};
        owners.insert(owners.end(), line.begin(), line.end());
    }
    std::unordered_map<std::uint32_t, bool> taken;
    for (const std::uint32_t owner : owners) {
        for (const std::uint32_t above : classes_.unstoredSupertypes(owner)) {
            if (!classes_.isEnumeration(above) && taken.try_emplace(above, true).second) {
                addAttributes(table, above, Rule::takenAttribute);
            }
        }
    }
    for (const std::uint32_t owner : owners) {
        addAttributes(table, owner,
                      owner == rows.front() || !isConcrete() ? Rule::attribute : Rule::inheritedAttribute);
    }
}

void Planner::addAttributes(std::uint32_t table, std::uint32_t owner, Rule rule) {
    std::vector<const KelAttribute*> attributes;
    for (const KelAttribute* attribute : classes_.at(owner).attributes()) {
        attributes.push_back(attribute);
    }
    std::ranges::stable_sort(attributes, {}, &KelAttribute::position);
    const std::size_t before = plan_.tables[table].attributes.size();
    for (const KelAttribute* attribute : attributes) {
        addAttribute(table, *attribute, rule);
    }
    if (rule == Rule::takenAttribute && plan_.tables[table].attributes.size() > before) {
        decide(Topic::supertype, qualifiedName(*plan_.tables[table].element) + " has the attributes of " +
                                     qualifiedName(classes_.at(owner)) + ", a supertype that is no table");
    }
}

void Planner::addAttribute(std::uint32_t table, const KelAttribute& attribute, Rule rule) {
    PlannedTable& planned = plan_.tables[table];
    if (attribute.isDerived || attribute.isStatic) {
        if (isNew(attribute)) {
            omissions_.add(attribute.isDerived ? derived : shared);
        }
        return;
    }
    if (planned.attributes.size() >= mostColumns) {
        omissions_.add(tooMany);
        return;
    }
    PlannedColumn column;
    column.rule = rule;
    column.element = &attribute;
    column.name = utf8(attribute.getName());
    setType(column, attribute, table);
    const std::string initialValue = utf8(attribute.initialValue);
    if (initialValue.find_first_not_of(" \t\r\n") != std::string::npos) {
        const std::optional<Default> literal =
            column.target == noTable ? literalOf(initialValue, column.type, column.values) : std::nullopt;
        column.byDefault = literal.value_or(Default());
        if (!literal && isNew(attribute)) {
            decide(Topic::byDefault, qualifiedName(attribute) + " = " + initialValue);
        }
    }
    planned.columnOf.try_emplace(&attribute, static_cast<std::uint32_t>(planned.attributes.size()));
    planned.attributes.push_back(std::move(column));
}

void Planner::setType(PlannedColumn& column, const KelAttribute& attribute, std::uint32_t table) {
    const KelType* type = attribute.getType();
    const std::string typeName = type != nullptr ? utf8(type->getName()) : "";
    if (std::optional<ColumnType> mapped = choices_.types.ofUser(typeName)) {
        column.type = *std::move(mapped);
        return;
    }
    const std::uint32_t number = classes_.numberOf(classNames_.find(type));
    if (number != ClassTables::none && tableOf_[number] != noTable) {
        column.rule = Rule::attributeReference;
        column.target = tableOf_[number];
        return;
    }
    if (number != ClassTables::none && classes_.isEnumeration(number)) {
        isUsed_[number] = true;
        column.values = valuesOfClass(number);
        return;
    }
    if (type != nullptr && type->getTypeValueCount() > 0) {
        column.values = valuesOfType(type);
        return;
    }
    const std::optional<ColumnType> known = TypeMap::known(type);
    if (known) {
        column.type = *known;
    } else {
        plan_.unknownTypes[typeName].emplace_back(table,
                                                  static_cast<std::uint32_t>(plan_.tables[table].attributes.size()));
    }
}

const Values* Planner::addValues(Values values, const std::string& name) {
    const bool isTooLong =
        std::ranges::any_of(values, [](const std::string& value) { return value.size() > longestValue; });
    if (values.empty() || isTooLong) {
        decide(Topic::type, name + (values.empty() ? " has no values" : " has a value that is too long") +
                                ", so that its columns are not checked");
        return nullptr;
    }
    return schema_.values.emplace_back(std::make_unique<Values>(std::move(values))).get();
}

const Values* Planner::valuesOfClass(std::uint32_t number) {
    const KelClass& one = classes_.at(number);
    const auto [found, isNew] = values_.try_emplace(&one, nullptr);
    if (isNew) {
        std::vector<const KelAttribute*> literals;
        for (const KelAttribute* literal : one.attributes()) {
            literals.push_back(literal);
        }
        std::ranges::stable_sort(literals, {}, &KelAttribute::position);
        Values values;
        for (const KelAttribute* literal : literals) {
            values.push_back(utf8(literal->getName()));
        }
        found->second = addValues(std::move(values), qualifiedName(one));
    }
    return found->second;
}

const Values* Planner::valuesOfType(const KelType* type) {
    const auto [found, isNew] = values_.try_emplace(type, nullptr);
    if (isNew) {
        Values values;
        for (int index = 0; index < type->getTypeValueCount(); ++index) {
            values.push_back(utf8(type->getTypeValue(index)->getName()));
        }
        found->second = addValues(std::move(values), qualifiedName(*type));
    }
    return found->second;
}

/// The plain columns of a key; nothing if an attribute is none of the table's, or is a reference.
std::optional<std::vector<std::uint32_t>> Planner::columnsOf(const KelKey& key, std::uint32_t table) const {
    const PlannedTable& planned = plan_.tables[table];
    std::vector<std::uint32_t> columns;
    for (const KelAttribute* attribute : key.attributes()) {
        const auto found = planned.columnOf.find(attribute);
        if (found == planned.columnOf.end() || planned.attributes[found->second].target != noTable) {
            return std::nullopt;
        }
        columns.push_back(found->second);
    }
    return columns.empty() || columns.size() > mostKeyColumns ? std::nullopt : std::optional(std::move(columns));
}

void Planner::addKeys(std::uint32_t table) {
    PlannedTable& planned = plan_.tables[table];
    const bool isNatural = choices_.key == "natural";
    std::vector<std::uint32_t> owners; // the class itself last
    for (const std::uint32_t number : planned.classes) {
        const std::vector<std::uint32_t> line = isConcrete() ? classes_.lineOf(number) : std::vector{number};
        owners.insert(owners.end(), line.begin(), line.end());
    }
    const std::uint32_t first = planned.classes.front();
    if (isJoined() && !classes_.supertypes(first).empty()) {
        planned.keyPlan = KeyPlan::inherited;
        planned.supertable = tableOf_[classes_.supertypes(first).front().number];
        planned.inheritance = classes_.supertypes(first).front().said;
    }
    for (const std::uint32_t owner : owners) {
        const KelClass& one = classes_.at(owner);
        for (const KelKey* key : one.keys()) {
            if (key->elementType != KelElementType::candidateKey) {
                continue;
            }
            const auto* candidate = static_cast<const KelCandidateKey*>(key);
            std::optional<std::vector<std::uint32_t>> columns = columnsOf(*key, table);
            if (!columns) {
                if (isNew(*key)) {
                    omissions_.add(unusableKey);
                }
                continue;
            }
            const bool isOfAllRows = !isSingle() || owner == first;
            const bool isPrimary = candidate->getPrimaryOfClass() == &one && isNatural && isOfAllRows &&
                                   planned.keyPlan != KeyPlan::inherited;
            if (isPrimary) { // one that is nearer to the class takes the place of an inherited one
                if (planned.keyPlan == KeyPlan::natural) {
                    planned.uniques.push_back(std::move(planned.primary));
                }
                planned.keyPlan = KeyPlan::natural;
                planned.primary = {candidate, *std::move(columns)};
            } else {
                planned.uniques.push_back({candidate, *std::move(columns)});
            }
        }
    }
}

void Planner::addReference(std::uint32_t table, PlannedColumn reference) {
    PlannedTable& planned = plan_.tables[table];
    if (planned.attributes.size() + planned.references.size() >= mostColumns) {
        omissions_.add(tooManyReferences);
        return;
    }
    planned.references.push_back(std::move(reference));
}

void Planner::addSupertypes(std::uint32_t table) {
    if (isConcrete()) {
        return;
    }
    const std::vector<std::uint32_t> rows = plan_.tables[table].classes;
    for (const std::uint32_t number : rows) {
        const auto supertypes = classes_.supertypes(number);
        for (std::size_t index = 1; index < supertypes.size(); ++index) {
            const std::uint32_t target = tableOf_[supertypes[index].number];
            if (target == table) {
                continue; // its columns are here
            }
            PlannedColumn reference;
            reference.rule = Rule::supertypeReference;
            reference.element = supertypes[index].said;
            reference.name = utf8(classes_.at(supertypes[index].number).getName());
            reference.target = target;
            reference.isNotNull = isJoined();
            reference.isUnique = true;
            reference.cascades = true;
            addReference(table, std::move(reference));
        }
    }
}

void Planner::addForeignKeys(std::uint32_t table) {
    const std::vector<std::uint32_t> rows = plan_.tables[table].classes;
    for (const std::uint32_t number : rows) {
        for (const std::uint32_t owner : isConcrete() ? classes_.lineOf(number) : std::vector{number}) {
            for (const KelKey* key : classes_.at(owner).keys()) {
                if (key->elementType == KelElementType::foreignKey) {
                    addForeignKey(table, static_cast<const KelForeignKey&>(*key));
                }
            }
        }
    }
}

/// The attributes of a foreign key, each at the place of the attribute that it copies: by the key's maps, else by name,
/// else in their order.
std::vector<const KelAttribute*> copiesOf(const KelForeignKey& key, const KelCandidateKey& target) {
    std::unordered_map<const KelAttribute*, const KelAttribute*> mapped;
    for (const KelAssociationRoleNameMap* map : key.roleNameMaps()) {
        mapped.try_emplace(map->getSourceAttribute(), map->getDestinationAttribute());
    }
    std::vector<const KelAttribute*> copies;
    int index = 0;
    for (const KelAttribute* original : target.attributes()) {
        const auto found = mapped.find(original);
        const KelAttribute* copy =
            found != mapped.end() && found->second != nullptr && key.attributes().holds(*found->second)
                ? found->second
                : key.attributes().findNamed(original->getName());
        copies.push_back(copy != nullptr ? copy : key.attributes()[index]);
        ++index;
    }
    return copies;
}

void Planner::addForeignKey(std::uint32_t table, const KelForeignKey& key) {
    const KelCandidateKey* target = key.getCandidateKey();
    const std::uint32_t owner = target != nullptr ? classes_.numberOf(target->getAssociatedClass()) : ClassTables::none;
    const std::uint32_t targetTable = owner != ClassTables::none ? tableOf_[owner] : noTable;
    PlannedForeignKey planned{
        .table = table, .key = &key, .target = target, .targetTable = targetTable, .columns = {}, .targetColumns = {}};
    bool isPossible = targetTable != noTable && target->attributes().count() == key.attributes().count();
    if (isPossible) {
        const auto columns = columnsOf(*target, targetTable);
        isPossible = columns.has_value();
        planned.targetColumns = columns.value_or(std::vector<std::uint32_t>());
        for (const KelAttribute* copy : copiesOf(key, *target)) {
            const auto found = plan_.tables[table].columnOf.find(copy);
            isPossible = isPossible && found != plan_.tables[table].columnOf.end();
            if (isPossible) {
                planned.columns.push_back(found->second);
                const PlannedColumn& from = plan_.tables[table].attributes[found->second];
                const PlannedColumn& to =
                    plan_.tables[targetTable].attributes[planned.targetColumns[planned.columns.size() - 1]];
                isPossible = from.target == noTable && areComparable(from.type, to.type) &&
                             std::ranges::count(planned.columns, found->second) == 1;
            }
        }
    }
    if (!isPossible) {
        if (!isNew(key)) {
            return;
        }
        decide(Topic::foreignKey,
               "the foreign key of " + qualifiedName(*key.getAssociatedClass()) +
                   (target == nullptr ? " refers to no key" : " refers to a key that is none of a table's columns"));
        return;
    }
    for (const KelAssociationRole* role : key.associationRoles()) {
        const KelAssociation* association = role->getAssociation();
        if (association != nullptr) {
            const int index = association->associationRoles().indexOf(*role);
            planned.cascades = planned.cascades ||
                               aggregationOf(*association, static_cast<std::size_t>(index)) == Aggregation::composite;
        }
    }
    made_.insert(&key);
    plan_.foreignKeys.push_back(std::move(planned));
}

void Planner::addAssociation(const KelAssociation& association) {
    std::vector<KelAssociationRole*> roles;
    bool isDone = false;
    bool areStored = true;
    for (KelAssociationRole* role : association.associationRoles()) {
        roles.push_back(role);
        const std::uint32_t number = classes_.numberOf(role->getAssociatedClass());
        areStored = areStored && number != ClassTables::none && classes_.isStored(number);
        for (const KelForeignKey* key : role->foreignKeys()) {
            isDone = isDone || made_.contains(key);
        }
    }
    if (isDone) {
        return;
    }
    if (roles.size() < 2 || !areStored) {
        omissions_.add(roles.size() < 2 ? fewEnds : unstoredEnd);
        return;
    }
    if (roles.size() == 2) {
        addLink(association, roles);
    } else {
        addJoinTable(association, roles);
    }
}

/// What the name of a reference to the class of the role is made from.
std::string referenceName(const KelAssociationRole& role) {
    return utf8(role.getName().isEmpty() ? role.getAssociatedClass()->getName() : role.getName());
}

void Planner::addLink(const KelAssociation& association, std::span<KelAssociationRole* const> roles) {
    std::array<std::optional<Bounds>, 2> bounds;
    std::array<bool, 2> isMany{};
    std::array<bool, 2> isAsked{};
    for (std::size_t end = 0; end < 2; ++end) {
        const std::string text = utf8(roles[end]->multiplicity);
        bounds[end] = boundsOf(text);
        isMany[end] = bounds[end] && (!bounds[end]->upper || *bounds[end]->upper > 1);
        isAsked[end] = bounds[end] && bounds[end]->lower > 0;
        if (!bounds[end]) {
            decide(Topic::multiplicity, shownName(association) + ": " + referenceName(*roles[end]) +
                                            (text.empty() ? " has none" : " has '" + text + "'"));
        }
    }
    for (std::size_t end = 0; end < 2; ++end) {
        if (isMany[end] && (isAsked[end] || bounds[end]->upper)) {
            omissions_.add(unasked);
        }
    }
    if (isMany[0] && isMany[1]) {
        addJoinTable(association, roles);
        return;
    }
    std::size_t side = roles[1]->isSource ? 1 : 0;
    if (isMany[0] || isMany[1]) {
        side = isMany[0] ? 0 : 1;
    } else if (isAsked[0] != isAsked[1]) {
        side = isAsked[1] ? 0 : 1;
    }
    if (isAsked[side] && !isMany[side]) {
        omissions_.add(unasked);
    }
    const std::uint32_t from = classes_.numberOf(roles[side]->getAssociatedClass());
    const std::uint32_t to = classes_.numberOf(roles[1 - side]->getAssociatedClass());
    if (tableOf_[to] == noTable) {
        omissions_.add(unstoredEnd);
        return;
    }
    PlannedColumn reference;
    reference.rule = Rule::associationReference;
    reference.element = &association;
    reference.name = referenceName(*roles[1 - side]);
    reference.target = tableOf_[to];
    reference.isNotNull = isAsked[1 - side] && !(isSingle() && classes_.rootOf(from) != from);
    reference.isUnique = !isMany[side] && bounds[side].has_value();
    reference.cascades = aggregationOf(association, side) == Aggregation::composite;
    const std::vector<std::uint32_t> tables = tablesWithColumnsOf(from);
    if (isConcrete() && belowInTables_[to].size() > 1) {
        decide(Topic::association, shownName(association) + " refers to objects of " + qualifiedName(classes_.at(to)) +
                                       " only, not to those of its subclasses");
    }
    if (tables.empty()) {
        omissions_.add(unstoredEnd);
    }
    for (const std::uint32_t table : tables) {
        addReference(table, reference);
    }
}

void Planner::addJoinTable(const KelAssociation& association, std::span<KelAssociationRole* const> roles) {
    PlannedTable table;
    table.rule = Rule::joinTable;
    table.element = &association;
    table.keyPlan = KeyPlan::references;
    bool isComposite = false;
    for (std::size_t end = 0; end < roles.size(); ++end) {
        isComposite = isComposite || aggregationOf(association, end) == Aggregation::composite;
    }
    for (const KelAssociationRole* role : roles) {
        PlannedColumn reference;
        reference.rule = Rule::joinReference;
        reference.element = &association;
        reference.name = referenceName(*role);
        reference.target = tableOf_[classes_.numberOf(role->getAssociatedClass())];
        reference.isNotNull = true;
        reference.cascades = isComposite;
        if (reference.target == noTable) {
            omissions_.add(unstoredEnd);
            return;
        }
        table.references.push_back(std::move(reference));
    }
    plan_.tables.push_back(std::move(table));
}

} // namespace

Plan makePlan(const KelModel& model, const ClassTables& classes, const SchemaChoices& choices, Schema& schema,
              Omissions& omissions) {
    return Planner(model, classes, choices, schema, omissions).plan();
}

std::string shownName(const KelObject& element) {
    if (element.elementType != KelElementType::association || !element.getName().isEmpty()) {
        return qualifiedName(element);
    }
    std::string name = "the association of ";
    int count = 0;
    for (const KelAssociationRole* role : static_cast<const KelAssociation&>(element).associationRoles()) {
        const KelClass* one = role->getAssociatedClass();
        name += (count++ == 0 ? "" : " and ") + (one != nullptr ? qualifiedName(*one) : "nothing");
        name += role->getName().isEmpty() ? "" : " (" + utf8(role->getName()) + ")";
    }
    return name;
}

} // namespace exporter::sql
