#pragma once

#include "catalog/tables.h"
#include "text/Output.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace catalog {

/// A value of a row. Texts belong to somebody else.
struct Value {
    enum class Kind : std::uint8_t { null, integer, text };
    Kind kind = Kind::null;
    std::int64_t number = 0;
    std::string_view text;
};

/// Writes the rows of one model in a compact form of bytes, which goes from process to process of one program.
///
/// Rows refer to each other by local numbers: the rows of each table count from 1 in the order of writing, but the rows
/// of a part of an element have the number of that element. A row may refer to one that follows. The model's own row is
/// the first. Used by one thread.
class RowWriter {
public:
    /// `output` must live as long.
    explicit RowWriter(text::Output& output) : output_(output) {}

    /// Begins a row. Its values follow in the order of the columns, without a key. Returns its local number; 0 for a
    /// part of an element.
    std::uint32_t start(TableId table);
    /// 0: null.
    void reference(std::uint32_t localNumber);
    void integer(std::int64_t value);
    void flag(bool value) { integer(value ? 1 : 0); }
    void null();
    /// Invalid sequences of UTF-8 and U+0000 become U+FFFD.
    void name(std::string_view value);
    /// The same; an empty text is null.
    void text(std::string_view value);
    /// Writes what is left. Throws what the output throws, as every function does, and `std::logic_error` when the last
    /// row lacks a value or has too many, as `start` does.
    void finish();

private:
    void checkLast() const;
    void put(std::uint64_t number);

    text::BufferedOutput output_;
    const Table* table_ = nullptr; // of the row that is being written
    std::size_t values_ = 0;       // of that row so far
    std::array<std::uint32_t, tableCount> counts_{};
};

/// A row as it was written, or as it goes to a database.
struct Row {
    TableId table = TableId::model;
    std::vector<Value> values; ///< all columns but a key
};

/// Reads what a `RowWriter` wrote.
class RowReader {
public:
    /// `bytes` must live as long as the rows' texts are used.
    explicit RowReader(std::string_view bytes) : bytes_(bytes) {}

    /// Reads the next row into `row`; returns false at the end. Throws `std::runtime_error` when the bytes were cut.
    bool next(Row& row);

private:
    std::uint64_t number();

    std::string_view bytes_;
};

/// The numbers that a database gives to the rows of one model. `Ids::first` must be free from there on.
struct Ids {
    std::array<std::int64_t, tableCount> first{}; ///< of new rows, by table; parts of elements have none
    std::int64_t model = 0;                       ///< of the model's own row
    /// The numbers of the elements by their local number less 1; empty: they follow each other from `first` on.
    std::vector<std::int64_t> elements;
};

/// Reads rows with the database's numbers instead of local ones: of their keys and in all references.
class PlacedRows {
public:
    /// `bytes` are those of a `RowWriter`; both must live as long.
    PlacedRows(std::string_view bytes, const Ids& ids) : reader_(bytes), ids_(ids) {}

    /// Advances to the next row; throws as `RowReader::next`.
    bool next();
    [[nodiscard]] TableId table() const { return row_.table; }
    /// The number of the model.
    [[nodiscard]] std::int64_t getModel() const { return ids_.model; }
    /// The values of all columns, a key included.
    [[nodiscard]] std::span<const Value> values() const { return values_; }
    /// The numbers that are free after the rows so far.
    [[nodiscard]] Ids following() const;

private:
    [[nodiscard]] std::int64_t placed(TableId table, std::int64_t local) const;

    RowReader reader_;
    const Ids& ids_;
    Row row_;
    std::vector<Value> values_;
    std::array<std::uint32_t, tableCount> counts_{};
};

} // namespace catalog
