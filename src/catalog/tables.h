#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace catalog {

/// The version of the catalogue's tables. A catalogue of another version is not written to.
inline constexpr int schemaVersion = 2;

/// The tables with rows of models. `about` and `guide`, which describe them, are not among these.
enum class TableId : std::uint8_t {
    model,
    unit,
    origin,
    element,
    type,
    typeValue,
    classTable,
    attribute,
    operation,
    argument,
    association,
    role,
    generalization,
    realization,
    dependency,
    keyTable,
    keyAttribute,
    roleForeignKey,
    roleNameMap,
    diagram,
    diagramElement,
    note,
    loss,
    damage,
    sourceObject,
    sourceProperty,
};
inline constexpr std::size_t tableCount = static_cast<std::size_t>(TableId::sourceProperty) + 1;

enum class ColumnKind : std::uint8_t {
    key,       ///< the row's own number; the rows of a model do not say it (`Rows.h`)
    reference, ///< the number of a row of another table, or null
    integer,
    flag, ///< 0 or 1
    text, ///< UTF-8 without U+0000, or null; a name is never null
};

struct Column {
    std::string_view name;
    ColumnKind kind;
    std::string_view about; ///< its meaning, for people
    TableId target = {};    ///< of a reference
};

/// A table of the catalogue.
///
/// A first column of the kind `key` numbers the table's own rows. A first column that is a reference makes each row the
/// further part of a row of its target and has that one's number: it is the primary key as well.
struct Table {
    TableId id;
    std::string_view name;
    std::string_view about;
    std::span<const Column> columns;
    /// The column, by its index, that leads to the model of a row: a reference to the model, to an element, or to an
    /// object of the files. Of the model itself its key.
    std::size_t owner;
};

/// All tables in the order of `TableId`. A database can be filled in this order.
[[nodiscard]] std::span<const Table> tables();
[[nodiscard]] const Table& tableOf(TableId id);

/// The table whose rows have the same numbers: the element for the parts of elements, else the table itself.
[[nodiscard]] TableId numberedBy(TableId id);

/// A column of a thing.
struct Detail {
    std::string_view name;
    std::string_view about;
};
/// A view, or another thing in the catalogue that has no rows of models.
struct Thing {
    std::string_view name;
    std::string_view about;
    std::span<const Detail> columns = {};
};
/// Views, the search, and the tables `about` and `guide`.
[[nodiscard]] std::span<const Thing> otherThings();

} // namespace catalog
