#include "export/ClassNames.h"
#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/sql/Plan.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelTypeValue.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace exporter::sql {

namespace {

/// PostgreSQL and Oracle have no more.
constexpr std::size_t mostKeyColumns = 32;
constexpr std::size_t longestValue = 1'000; // bytes of a value of a CHECK

constexpr Omission derived{"derived attribute", "derived attributes", "the value is computed"};
constexpr Omission shared{"static attribute", "static attributes", "the value is not one of a row"};
constexpr Omission tooMany{"attribute", "attributes", "a table has at most 1,000 columns"};
constexpr Omission unusedEnumeration{"enumeration", "enumerations", "no column has its values"};
constexpr Omission unusableKey{"key", "keys", "the attributes are no columns of the table"};

class Planner {
public:
    Planner(const KelModel& model, const ClassTables& classes, const SchemaChoices& choices, Schema& schema,
            Omissions& omissions)
        : classes_(classes), choices_(choices), schema_(schema), omissions_(omissions), classNames_(model),
          isUsed_(classes.count(), false) {}

    Plan plan() {
        plan_.tableOf.assign(classes_.count(), noTable);
        planTables();
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            addColumns(table);
        }
        for (std::uint32_t table = 0; table < plan_.tables.size(); ++table) {
            addKeys(table);
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
    [[nodiscard]] const std::vector<std::uint32_t>& ownersOf(const PlannedTable& planned);
    void addColumns(std::uint32_t table);
    void addAttributes(std::uint32_t table, std::uint32_t owner, Rule rule);
    void addAttribute(std::uint32_t table, const KelAttribute& attribute, Rule rule);
    void setType(PlannedColumn& column, const KelAttribute& attribute, std::uint32_t table);
    const Values* valuesOfClass(std::uint32_t number);
    const Values* valuesOfType(const KelType* type);
    const Values* addValues(Values values, const std::string& name);
    void addKeys(std::uint32_t table);

    const ClassTables& classes_;
    const SchemaChoices& choices_;
    Schema& schema_;
    Omissions& omissions_;
    ClassNames classNames_;
    Plan plan_;
    std::vector<bool> isUsed_;                              // by class: an enumeration of a column
    std::unordered_map<const void*, const Values*> values_; // by class or type
    std::unordered_map<const KelType*, std::optional<ColumnType>> known_;
    std::unordered_set<const KelObject*> told_;
    std::vector<std::uint32_t> owners_;
};

void Planner::planTables() {
    plan_.tables.reserve(classes_.count());
    for (std::uint32_t number = 0; number < classes_.count(); ++number) {
        const bool isTable = classes_.isStored(number) && (!isSingle() || classes_.rootOf(number) == number) &&
                             (!isConcrete() || !classes_.at(number).isAbstract);
        if (!isTable) {
            continue;
        }
        PlannedTable table;
        table.element = &classes_.at(number);
        plan_.tableOf[number] = static_cast<std::uint32_t>(plan_.tables.size());
        table.rule = isJoined() ? Rule::classTable : isSingle() ? Rule::treeTable : Rule::concreteTable;
        table.classes = {number};
        if (isSingle()) { // the whole tree, supertypes first
            std::vector<std::uint32_t> left{number};
            table.classes.clear();
            while (!left.empty()) {
                const std::uint32_t next = left.back();
                left.pop_back();
                table.classes.push_back(next);
                plan_.tableOf[next] = plan_.tableOf[number];
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
    plan_.tablesBelow.resize(classes_.count());
    for (std::uint32_t number = 0; number < classes_.count(); ++number) {
        if (!classes_.isStored(number)) {
            continue;
        }
        if (plan_.tableOf[number] == noTable) {
            decide(Topic::tables, qualifiedName(classes_.at(number)) + " is abstract and no table");
            continue;
        }
        for (const std::uint32_t above : classes_.lineOf(number)) {
            plan_.tablesBelow[above].push_back(plan_.tableOf[number]);
        }
    }
}

/// The classes whose attributes and keys the table has, each class itself last. Valid until the next call.
const std::vector<std::uint32_t>& Planner::ownersOf(const PlannedTable& planned) {
    if (!isConcrete()) {
        return planned.classes;
    }
    owners_.clear();
    for (const std::uint32_t number : planned.classes) {
        const std::vector<std::uint32_t> line = classes_.lineOf(number);
        owners_.insert(owners_.end(), line.begin(), line.end());
    }
    return owners_;
}

void Planner::addColumns(std::uint32_t table) {
    const std::vector<std::uint32_t>& owners = ownersOf(plan_.tables[table]);
    const std::uint32_t first = plan_.tables[table].classes.front();
    std::unordered_map<std::uint32_t, bool> taken;
    for (const std::uint32_t owner : owners) {
        for (const std::uint32_t above : classes_.unstoredSupertypes(owner)) {
            if (!classes_.isEnumeration(above) && taken.try_emplace(above, true).second) {
                addAttributes(table, above, Rule::takenAttribute);
            }
        }
    }
    for (const std::uint32_t owner : owners) {
        addAttributes(table, owner, owner == first || !isConcrete() ? Rule::attribute : Rule::inheritedAttribute);
    }
}

void Planner::addAttributes(std::uint32_t table, std::uint32_t owner, Rule rule) {
    if (classes_.at(owner).attributes().count() == 0) {
        return;
    }
    std::vector<const KelAttribute*> attributes;
    for (const KelAttribute* attribute : classes_.at(owner).attributes()) {
        attributes.push_back(attribute);
    }
    std::ranges::stable_sort(attributes, {}, &KelAttribute::position);
    const std::size_t before = plan_.tables[table].attributes.size();
    if (before == 0) { // in a table of many classes the vector must grow by itself
        plan_.tables[table].attributes.reserve(attributes.size());
    }
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
    const std::string initialValue = attribute.initialValue.isEmpty() ? std::string() : utf8(attribute.initialValue);
    if (initialValue.find_first_not_of(" \t\r\n") != std::string::npos) {
        const std::optional<Default> literal =
            column.target == noTable ? literalOf(initialValue, column.type, column.values) : std::nullopt;
        column.byDefault = literal.value_or(Default());
        if (!literal && isNew(attribute)) {
            decide(Topic::byDefault, qualifiedName(attribute) + " = " + initialValue);
        }
    }
    planned.attributes.push_back(std::move(column));
}

void Planner::setType(PlannedColumn& column, const KelAttribute& attribute, std::uint32_t table) {
    const KelType* type = attribute.getType();
    const auto typeName = [type] { return type != nullptr ? utf8(type->getName()) : std::string(); };
    if (!choices_.types.isEmpty()) {
        if (std::optional<ColumnType> mapped = choices_.types.ofUser(typeName())) {
            column.type = *std::move(mapped);
            return;
        }
    }
    const std::uint32_t number = classes_.numberOf(classNames_.find(type));
    if (number != ClassTables::none && plan_.tableOf[number] != noTable) {
        column.rule = Rule::attributeReference;
        column.target = plan_.tableOf[number];
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
    const auto [found, isNew] = known_.try_emplace(type);
    if (isNew) {
        found->second = TypeMap::known(type);
    }
    if (const std::optional<ColumnType>& known = found->second) {
        column.type = *known;
    } else {
        plan_.unknownTypes[typeName()].emplace_back(table,
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

void Planner::addKeys(std::uint32_t table) {
    PlannedTable& planned = plan_.tables[table];
    const bool isNatural = choices_.key == "natural";
    const std::vector<std::uint32_t>& owners = ownersOf(planned);
    const std::uint32_t first = planned.classes.front();
    if (isJoined() && !classes_.supertypes(first).empty()) {
        planned.keyPlan = KeyPlan::inherited;
        planned.supertable = plan_.tableOf[classes_.supertypes(first).front().number];
        planned.inheritance = classes_.supertypes(first).front().said;
    }
    for (const std::uint32_t owner : owners) {
        const KelClass& one = classes_.at(owner);
        for (const KelKey* key : one.keys()) {
            if (key->elementType != KelElementType::candidateKey) {
                continue;
            }
            const auto* candidate = static_cast<const KelCandidateKey*>(key);
            std::optional<std::vector<std::uint32_t>> columns = columnsOf(*key, planned);
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

} // namespace

std::uint32_t PlannedTable::columnOf(const KelAttribute* attribute) const {
    const auto found = std::ranges::find(attributes, attribute, &PlannedColumn::element);
    return found != attributes.end() ? static_cast<std::uint32_t>(found - attributes.begin()) : noColumn;
}

std::optional<std::vector<std::uint32_t>> columnsOf(const KelKey& key, const PlannedTable& planned) {
    std::vector<std::uint32_t> columns;
    for (const KelAttribute* attribute : key.attributes()) {
        const std::uint32_t column = planned.columnOf(attribute);
        if (column == noColumn || planned.attributes[column].target != noTable) {
            return std::nullopt;
        }
        columns.push_back(column);
    }
    return columns.empty() || columns.size() > mostKeyColumns ? std::nullopt : std::optional(std::move(columns));
}

Plan planTables(const KelModel& model, const ClassTables& classes, const SchemaChoices& choices, Schema& schema,
                Omissions& omissions) {
    return Planner(model, classes, choices, schema, omissions).plan();
}

} // namespace exporter::sql
