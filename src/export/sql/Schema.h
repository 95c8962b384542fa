#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class KelClass;
class KelObject;

/// The tables and keys of a model, for any dialect. `makeSchema` makes them, and nothing changes them afterwards. A
/// schema refers to the elements of its model, which must outlive it.
namespace exporter::sql {

/// The content of a column, whatever a dialect calls its type.
enum class Family : std::uint8_t {
    smallInteger,
    integer,
    bigInteger,
    number, ///< with exact decimal places
    real,
    doubleReal,
    boolean,
    text,
    fixedText,
    date,
    time,
    timestamp,
    binary,
    other, ///< only the user's type map knows
};

struct ColumnType {
    Family family = Family::text;
    std::uint32_t length = 0; ///< characters of a text, bytes, or digits of a number; 0: any number
    std::uint32_t scale = 0;  ///< of these, digits after the decimal point
    std::string sql;          ///< not empty: the type as the user's type map has it, for every dialect

    bool operator==(const ColumnType&) const = default;
};

/// The decision that made a table, a column, a key or a constraint.
enum class Rule : std::uint8_t {
    classTable,
    treeTable,
    concreteTable,
    joinTable,
    madeKey,
    inheritedKey,
    kindColumn,
    attribute,
    inheritedAttribute,
    takenAttribute,
    attributeReference,
    supertypeReference,
    associationReference,
    joinReference,
    primaryKey,
    candidateKey,
    foreignKey,
    oneToOne,
};

/// "the attribute of a supertype", ...: half a sentence for each rule.
[[nodiscard]] std::string_view ruleText(Rule rule);

/// How a name differs from the text that it is made from, apart from its style.
struct NameChange {
    bool hasPackage = false; ///< packages are in front, as several classes have the name
    bool isCut = false;      ///< it was too long
    bool isNumbered = false; ///< another one has the name
    bool isMade = false;     ///< the text is empty, or must not begin a name
    [[nodiscard]] bool isAny() const { return hasPackage || isCut || isNumbered || isMade; }
};

struct Name {
    std::string text;
    NameChange change;
};

/// "numbered, as another one has the name", ...: the changes in words; empty for none.
[[nodiscard]] std::string changeText(const NameChange& change);

/// A value that a column has by default; written as its family demands.
struct Default {
    enum class Kind : std::uint8_t { none, number, boolean, text };
    Kind kind = Kind::none;
    std::string value; ///< a number in digits, "true" or "false", or any text
};

/// The values that a column may have, in their order. Shared by columns of one type.
using Values = std::vector<std::string>;

struct Column {
    Name name;
    ColumnType type;
    Rule rule = Rule::attribute;
    const KelObject* element = nullptr; ///< that it came from
    bool isNotNull = false;
    bool isGenerated = false; ///< the system numbers the rows
    bool isKey = false;       ///< part of a key, a reference or an index
    Default byDefault;
    const Values* values = nullptr; ///< those of the CHECK; null for none. Owned by the schema
    std::string check;              ///< the name of the CHECK; empty for none
};

/// Columns as indexes into those of their table.
using Columns = std::vector<std::uint32_t>;

/// A primary key, or one that is UNIQUE.
struct Key {
    std::string name;
    Columns columns;
    Rule rule = Rule::primaryKey;
    const KelObject* element = nullptr;
};

struct Reference {
    std::string name;
    Columns columns;
    std::uint32_t table = 0; ///< index into the schema's tables
    Columns keyColumns;      ///< of that table, one for each of `columns`
    bool cascades = false;   ///< the row goes with the row that it refers to
    Rule rule = Rule::foreignKey;
    const KelObject* element = nullptr;
};

struct Index {
    std::string name;
    Columns columns;
};

struct Table {
    Name name;
    Rule rule = Rule::classTable;
    const KelObject* element = nullptr;   ///< a class, or an association
    std::vector<const KelClass*> classes; ///< whose objects are its rows; none for a join table
    std::vector<Column> columns;
    std::optional<Key> primary;
    std::vector<Key> uniques;
    std::vector<Reference> references;
    std::vector<Index> indexes; ///< for the references whose columns no key begins with
};

/// A kind of decisions that a reader of the schema should know.
enum class Topic : std::uint8_t {
    tables,
    unknownType,
    type,
    byDefault,
    multiplicity,
    association,
    supertype,
    foreignKey,
    name,
};

/// "types that nothing knows; their columns are texts", ...
[[nodiscard]] std::string_view topicText(Topic topic);

struct Decision {
    Topic topic;
    std::string text; ///< of the model's names, so it may hold any characters
};

struct Schema {
    std::vector<Table> tables;
    std::vector<Decision> decisions;             ///< by topic
    std::vector<std::unique_ptr<Values>> values; ///< the owner of those in the columns
};

} // namespace exporter::sql
