#pragma once

#include "catalog/Database.h"

#include <cstdint>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <utility>

namespace catalog {

/// A file of SQLite, open. Used by one thread of one process; a forked process must leave it alone. All functions throw
/// `DatabaseFailure` with advice, and `std::bad_alloc`.
class Connection {
public:
    Connection(std::string path, Access access);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { close(); }

    [[nodiscard]] sqlite3* handle() const { return handle_; }
    /// Throws what `code`, the result of a function of SQLite, says; does nothing if it succeeded.
    void check(int code) const;
    /// Throws that the file, as `what` goes on, cannot be used.
    [[noreturn]] void refuse(const std::string& what, const std::string& advice) const;

    /// Runs statements without rows.
    void execute(const std::string& sql) const { check(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr)); }
    /// The same, whether they succeed or not.
    void tryTo(const char* sql) const { sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr); }
    /// The number that a query gives; 0 without a row.
    [[nodiscard]] std::int64_t numberOf(const std::string& sql) const;
    /// Whether the file has a table, view or index of that name.
    [[nodiscard]] bool has(std::string_view name) const;

private:
    void open(Access access);
    void close();
    void lockOut();

    std::string path_;
    sqlite3* handle_ = nullptr;
    int lock_ = -1; // the file, locked against other writers of catalogues
};

/// A prepared statement.
class Statement {
public:
    Statement(const Connection& connection, const std::string& sql);
    Statement(Statement&& other) noexcept
        : connection_(other.connection_), statement_(std::exchange(other.statement_, nullptr)) {}
    Statement& operator=(Statement&&) = delete;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement() { sqlite3_finalize(statement_); }

    /// Binds values that live until the next `reset`; parameters count from 1.
    void bind(int parameter, std::int64_t number) { sqlite3_bind_int64(statement_, parameter, number); }
    void bind(int parameter, std::string_view text) {
        sqlite3_bind_text64(statement_, parameter, text.data() != nullptr ? text.data() : "", text.size(),
                            SQLITE_STATIC, SQLITE_UTF8);
    }
    void bindNull(int parameter) { sqlite3_bind_null(statement_, parameter); }
    void bind(int parameter, const Value& value) {
        switch (value.kind) {
        case Value::Kind::null:
            return bindNull(parameter);
        case Value::Kind::integer:
            return bind(parameter, value.number);
        case Value::Kind::text:
            return bind(parameter, value.text);
        }
    }

    /// Advances to the next row; false after the last.
    bool step();
    /// Makes it ready to be run again.
    void reset() { sqlite3_reset(statement_); }
    /// Runs a statement without rows, so that it can be run again.
    void run() {
        step();
        reset();
    }

    [[nodiscard]] int columnCount() const { return sqlite3_column_count(statement_); }
    [[nodiscard]] std::string columnName(int column) const { return sqlite3_column_name(statement_, column); }
    [[nodiscard]] std::int64_t number(int column) const { return sqlite3_column_int64(statement_, column); }
    [[nodiscard]] std::string text(int column) const { return std::string(view(column)); }
    /// Lives until the next step.
    [[nodiscard]] std::string_view view(int column) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        return bytes != nullptr
                   ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)))
                   : std::string_view();
    }
    [[nodiscard]] Value value(int column) const {
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return {.kind = Value::Kind::integer, .number = number(column), .text = {}};
        default:
            return {.kind = Value::Kind::text, .number = 0, .text = view(column)};
        }
    }

private:
    const Connection& connection_;
    sqlite3_stmt* statement_ = nullptr;
};

} // namespace catalog
