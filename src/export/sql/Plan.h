#pragma once

#include "export/sql/ClassTables.h"
#include "export/sql/makeSchema.h"

#include <limits>
#include <map>

class KelAttribute;
class KelCandidateKey;
class KelForeignKey;
class KelKey;
class KelAssociationRole;

namespace exporter::sql {

inline constexpr std::uint32_t noTable = std::numeric_limits<std::uint32_t>::max();
inline constexpr std::uint32_t noColumn = noTable;

/// A column that a table is to have, or the columns of a reference, as many as the key has that it refers to.
struct PlannedColumn {
    Rule rule = Rule::attribute;
    const KelObject* element = nullptr; // that it comes from
    std::string name;                   // the model's text that names it
    ColumnType type;
    std::uint32_t target = noTable; // the table that it refers to; noTable: one column
    bool isNotNull = false;
    bool isUnique = false;
    bool cascades = false;
    Default byDefault;
    const Values* values = nullptr;
};

struct PlannedKey {
    const KelCandidateKey* key;
    std::vector<std::uint32_t> columns; // indexes into `PlannedTable::attributes`
};

/// How a table gets its primary key.
enum class KeyPlan : std::uint8_t { made, natural, inherited, references };

struct PlannedTable {
    Rule rule = Rule::classTable;
    const KelObject* element = nullptr;
    std::vector<std::uint32_t> classes; // numbers of those whose objects are rows
    KeyPlan keyPlan = KeyPlan::made;
    PlannedKey primary{nullptr, {}};        // of a natural key
    std::uint32_t supertable = noTable;     // of an inherited key
    const KelObject* inheritance = nullptr; // the generalization that says so
    bool hasKind = false;
    std::vector<PlannedColumn> attributes;
    std::vector<PlannedColumn> references; // to further supertypes, then of associations
    std::vector<PlannedKey> uniques;

    /// The index of the first of `attributes` that the attribute became; `noColumn` for none. Only keys ask, so that
    /// looking through a thousand columns at most costs less than a table of them.
    [[nodiscard]] std::uint32_t columnOf(const KelAttribute* attribute) const;
};

/// A foreign key of the model that becomes one of the schema.
struct PlannedForeignKey {
    std::uint32_t table;
    const KelForeignKey* key;
    const KelCandidateKey* target; // of `targetTable`, where it is the primary key or UNIQUE
    std::uint32_t targetTable;
    std::vector<std::uint32_t> columns;       // indexes into the attributes of the table
    std::vector<std::uint32_t> targetColumns; // likewise of the target
    bool cascades = false;
};

/// The parts of the schema before its columns have names.
struct Plan {
    std::vector<PlannedTable> tables;   // of classes in the order of the document, then of associations
    std::vector<std::uint32_t> tableOf; // by class: the table with its objects
    std::vector<std::vector<std::uint32_t>> tablesBelow; // by class, concrete: those with its columns
    std::vector<PlannedForeignKey> foreignKeys;
    std::map<std::string, std::vector<std::pair<std::uint32_t, std::uint32_t>>> unknownTypes; // tables and attributes
};

/// The fewest columns of a table that one of the systems has at most: Oracle.
inline constexpr std::size_t mostColumns = 1'000;

/// Decides what becomes a table, a column and a key. Adds values, decisions and omissions.
[[nodiscard]] Plan planTables(const KelModel& model, const ClassTables& classes, const SchemaChoices& choices,
                              Schema& schema, Omissions& omissions);

/// Adds what refers from table to table: further supertypes, foreign keys and associations, some with tables of their
/// own. Adds decisions and omissions.
void planReferences(const ClassTables& classes, const SchemaChoices& choices, Plan& plan, Schema& schema,
                    Omissions& omissions);

/// The columns of a key; nothing if an attribute is not a column of the table, or is a reference.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> columnsOf(const KelKey& key, const PlannedTable& table);

/// The qualified name of the element. For a nameless association "the association of Sales::Order and Sales::Customer",
/// and for a nameless generalization "the inheritance of Sales::Order from Sales::Deal".
[[nodiscard]] std::string shownName(const KelObject& element);
/// Appends it to a text.
void appendShownName(const KelObject& element, std::string& text);

} // namespace exporter::sql
