#pragma once

#include "catalog/Rows.h"
#include "catalog/sqlite/Connection.h"

#include <array>
#include <cstddef>
#include <memory_resource>
#include <optional>
#include <span>
#include <vector>

namespace catalog {

/// Collects rows and inserts them table by table, many with one statement: a statement costs as much as a row.
///
/// Owns copies of the rows' texts until they are inserted. Throws as `Statement`, and `std::bad_alloc`. The caller
/// provides the transaction.
class RowInserts {
public:
    /// `connection` must live as long.
    explicit RowInserts(const Connection& connection) : connection_(connection) {}

    void add(TableId table, std::span<const Value> values);
    /// The memory, in bytes, that the collected rows take.
    [[nodiscard]] std::size_t getLength() const { return length_; }
    /// Inserts the collected rows, each table's in the order of adding. They are forgotten, also after a failure.
    void insert();
    /// Ends the prepared statements, which would hinder changes of how the file is kept.
    void endStatements();

private:
    static constexpr std::size_t rowsOfOne = 32; // of a statement for several rows

    /// The statements of a table, for one row and for several.
    struct Prepared {
        std::optional<Statement> single;
        std::optional<Statement> several;
    };

    Statement& statementFor(std::size_t table, std::size_t rows);
    void insertAll(std::size_t table);
    void forget();

    const Connection& connection_;
    std::array<Prepared, tableCount> statements_{};
    std::array<std::vector<Value>, tableCount> values_; // of whole rows
    std::pmr::monotonic_buffer_resource texts_;
    std::size_t length_ = 0;
};

} // namespace catalog
