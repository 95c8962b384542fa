#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/relationships.h"
#include "export/sql/Plan.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace exporter::sql {

namespace {

constexpr Omission tooManyReferences{"association", "associations", "a table has at most 1,000 columns"};
constexpr Omission fewEnds{"association", "associations", "there are fewer than two ends"};
constexpr Omission unstoredEnd{"association", "associations", "a class at an end is no table"};
constexpr Omission ofForeignKey{"multiplicity", "multiplicities",
                                "the model's foreign key has columns that may be empty"};
constexpr Omission unasked{"multiplicity", "multiplicities", "a table cannot demand so many rows"};

class ReferencePlanner {
public:
    ReferencePlanner(const ClassTables& classes, const SchemaChoices& choices, Plan& plan, Schema& schema,
                     Omissions& omissions)
        : classes_(classes), choices_(choices), plan_(plan), schema_(schema), omissions_(omissions) {}

    void run() {
        const auto count = static_cast<std::uint32_t>(plan_.tables.size());
        for (std::uint32_t table = 0; table < count; ++table) {
            addSupertypes(table);
            addForeignKeys(table);
        }
        tellAttributes();
        for (const KelAssociation* association : classes_.associations()) {
            addAssociation(*association);
        }
    }

private:
    [[nodiscard]] bool isJoined() const { return choices_.inheritance == "joined"; }
    [[nodiscard]] bool isSingle() const { return choices_.inheritance == "single"; }
    [[nodiscard]] bool isConcrete() const { return choices_.inheritance == "concrete"; }

    void decide(Topic topic, std::string text) { schema_.decisions.push_back({topic, std::move(text)}); }

    void addReference(std::uint32_t table, PlannedColumn reference);
    void addSupertypes(std::uint32_t table);
    void addForeignKeys(std::uint32_t table);
    void addForeignKey(std::uint32_t table, const KelForeignKey& key);
    void addAssociation(const KelAssociation& association);
    void addLink(const KelAssociation& association, std::span<KelAssociationRole* const> roles);
    void tellSubclasses(const std::string& element, std::uint32_t target);
    void tellAttributes();
    void addJoinTable(const KelAssociation& association, std::span<KelAssociationRole* const> roles);
    /// The tables of the class and, when each class has its own with all inherited columns, of its subclasses.
    [[nodiscard]] std::vector<std::uint32_t> tablesWithColumnsOf(std::uint32_t number) const;

    const ClassTables& classes_;
    const SchemaChoices& choices_;
    Plan& plan_;
    Schema& schema_;
    Omissions& omissions_;
    std::unordered_set<const KelForeignKey*> made_; // foreign keys that are
    std::unordered_set<const KelForeignKey*> told_; // others; several tables may have their columns
};

std::vector<std::uint32_t> ReferencePlanner::tablesWithColumnsOf(std::uint32_t number) const {
    if (isConcrete()) {
        return plan_.tablesBelow[number];
    }
    return {plan_.tableOf[number]};
}

void ReferencePlanner::addReference(std::uint32_t table, PlannedColumn reference) {
    PlannedTable& planned = plan_.tables[table];
    if (planned.attributes.size() + planned.references.size() >= mostColumns) {
        omissions_.add(tooManyReferences);
        return;
    }
    planned.references.push_back(std::move(reference));
}

void ReferencePlanner::addSupertypes(std::uint32_t table) {
    if (isConcrete()) {
        return;
    }
    const std::vector<std::uint32_t> rows = plan_.tables[table].classes;
    for (const std::uint32_t number : rows) {
        const auto supertypes = classes_.supertypes(number);
        for (std::size_t index = 1; index < supertypes.size(); ++index) {
            const std::uint32_t target = plan_.tableOf[supertypes[index].number];
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

void ReferencePlanner::addForeignKeys(std::uint32_t table) {
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

void ReferencePlanner::addForeignKey(std::uint32_t table, const KelForeignKey& key) {
    const KelCandidateKey* target = key.getCandidateKey();
    const std::uint32_t owner = target != nullptr ? classes_.numberOf(target->getAssociatedClass()) : ClassTables::none;
    const std::uint32_t targetTable = owner != ClassTables::none ? plan_.tableOf[owner] : noTable;
    PlannedForeignKey planned{
        .table = table, .key = &key, .target = target, .targetTable = targetTable, .columns = {}, .targetColumns = {}};
    const bool isWhole = target == nullptr || target->attributes().count() == key.attributes().count();
    bool isPossible = targetTable != noTable && isWhole;
    if (isPossible) {
        const auto columns = columnsOf(*target, plan_.tables[targetTable]);
        isPossible = columns.has_value();
        planned.targetColumns = columns.value_or(std::vector<std::uint32_t>());
        for (const KelAttribute* copy : copiesOf(key, *target)) {
            const std::uint32_t column = plan_.tables[table].columnOf(copy);
            isPossible = isPossible && column != noColumn;
            if (isPossible) {
                planned.columns.push_back(column);
                const PlannedColumn& from = plan_.tables[table].attributes[column];
                const PlannedColumn& to =
                    plan_.tables[targetTable].attributes[planned.targetColumns[planned.columns.size() - 1]];
                isPossible = from.target == noTable && areComparable(from.type, to.type) &&
                             std::ranges::count(planned.columns, column) == 1;
            }
        }
    }
    if (!isPossible) {
        if (!told_.insert(&key).second) {
            return;
        }
        decide(Topic::foreignKey, "the foreign key of " + qualifiedName(*key.getAssociatedClass()) +
                                      (target == nullptr ? " refers to no key"
                                       : isWhole         ? " refers to a key that is none of a table's columns"
                                                         : " refers to a key of another number of attributes"));
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
    if (made_.insert(&key).second) {
        tellSubclasses("the foreign key of " + qualifiedName(*key.getAssociatedClass()), owner);
    }
    plan_.foreignKeys.push_back(std::move(planned));
}

void ReferencePlanner::addAssociation(const KelAssociation& association) {
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
        for (const KelAssociationRole* role : roles) {
            const std::optional<Bounds> bounds = boundsOf(utf8(role->multiplicity));
            if (bounds && bounds->lower > 0) {
                omissions_.add(ofForeignKey);
            }
        }
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

/// Tables of their own leave the subclasses' objects out of what refers to the class.
void ReferencePlanner::tellSubclasses(const std::string& element, std::uint32_t target) {
    if (isConcrete() && plan_.tablesBelow[target].size() > 1) {
        decide(Topic::association, element + " refers to objects of " + qualifiedName(classes_.at(target)) +
                                       " only, not to those of its subclasses");
    }
}

void ReferencePlanner::tellAttributes() {
    std::unordered_set<const KelObject*> told; // several tables may have the column
    for (const PlannedTable& table : plan_.tables) {
        for (const PlannedColumn& attribute : table.attributes) {
            if (attribute.target != noTable && told.insert(attribute.element).second) {
                tellSubclasses(qualifiedName(*attribute.element), plan_.tables[attribute.target].classes.front());
            }
        }
    }
}

/// The text from which the name of a reference to the role's class is made.
std::string referenceName(const KelAssociationRole& role) {
    return utf8(role.getName().isEmpty() ? role.getAssociatedClass()->getName() : role.getName());
}

void ReferencePlanner::addLink(const KelAssociation& association, std::span<KelAssociationRole* const> roles) {
    std::array<std::optional<Bounds>, 2> bounds;
    std::array<bool, 2> isMany{};
    std::array<bool, 2> isAsked{};
    for (std::size_t end = 0; end < 2; ++end) {
        bounds[end] = boundsOf(utf8(roles[end]->multiplicity));
        isMany[end] = bounds[end] && (!bounds[end]->upper || *bounds[end]->upper > 1);
        isAsked[end] = bounds[end] && bounds[end]->lower > 0;
    }
    if (!bounds[0] || !bounds[1]) {
        const auto lack = [&](std::size_t end) {
            const std::string text = utf8(roles[end]->multiplicity);
            return referenceName(*roles[end]) + (text.empty() ? " has none" : " has '" + text + "'");
        };
        const bool isNeither =
            !bounds[0] && !bounds[1] && roles[0]->multiplicity.isEmpty() && roles[1]->multiplicity.isEmpty();
        decide(Topic::multiplicity,
               shownName(association) + ": " + (isNeither ? "neither has one" : lack(bounds[0] ? 1 : 0)));
        if (!bounds[0] && !bounds[1] && !isNeither) {
            decide(Topic::multiplicity, shownName(association) + ": " + lack(1));
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
    if (plan_.tableOf[to] == noTable) {
        omissions_.add(unstoredEnd);
        return;
    }
    PlannedColumn reference;
    reference.rule = Rule::associationReference;
    reference.element = &association;
    reference.name = referenceName(*roles[1 - side]);
    reference.target = plan_.tableOf[to];
    reference.isNotNull = isAsked[1 - side] && !(isSingle() && classes_.rootOf(from) != from);
    reference.isUnique = !isMany[side] && bounds[side].has_value();
    reference.cascades = aggregationOf(association, side) == Aggregation::composite;
    const std::vector<std::uint32_t> tables = tablesWithColumnsOf(from);
    tellSubclasses(shownName(association), to);
    if (tables.empty()) {
        omissions_.add(unstoredEnd);
    }
    for (const std::uint32_t table : tables) {
        addReference(table, reference);
    }
}

void ReferencePlanner::addJoinTable(const KelAssociation& association, std::span<KelAssociationRole* const> roles) {
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
        reference.target = plan_.tableOf[classes_.numberOf(role->getAssociatedClass())];
        reference.isNotNull = true;
        reference.cascades = isComposite;
        if (reference.target == noTable) {
            omissions_.add(unstoredEnd);
            return;
        }
        tellSubclasses(shownName(association), classes_.numberOf(role->getAssociatedClass()));
        table.references.push_back(std::move(reference));
    }
    plan_.tables.push_back(std::move(table));
}

} // namespace

void planReferences(const ClassTables& classes, const SchemaChoices& choices, Plan& plan, Schema& schema,
                    Omissions& omissions) {
    ReferencePlanner(classes, choices, plan, schema, omissions).run();
}

void appendShownName(const KelObject& element, std::string& text) {
    if (!element.getName().isEmpty()) {
        appendQualifiedName(element, text);
    } else {
        text += shownName(element);
    }
}

std::string shownName(const KelObject& element) {
    if (!element.getName().isEmpty()) {
        return qualifiedName(element);
    }
    std::string name;
    const auto add = [&](std::string_view before, const KelClass* one) {
        name.append(name.empty() ? "" : before).append(one != nullptr ? qualifiedName(*one) : "nothing");
    };
    if (element.elementType == KelElementType::association) {
        for (const KelAssociationRole* role : static_cast<const KelAssociation&>(element).associationRoles()) {
            add(" and ", role->getAssociatedClass());
            name += role->getName().isEmpty() ? "" : " (" + utf8(role->getName()) + ")";
        }
        return "the association of " + name;
    }
    if (element.elementType == KelElementType::generalization) {
        const auto& generalization = static_cast<const KelGeneralization&>(element);
        for (const KelClass* subtype : generalization.subtypeClasses()) {
            add(", ", subtype);
        }
        std::string_view before = " from ";
        for (const KelClass* supertype : generalization.supertypeClasses()) {
            add(before, supertype);
            before = ", ";
        }
        return "the inheritance of " + name;
    }
    return qualifiedName(element);
}

} // namespace exporter::sql
