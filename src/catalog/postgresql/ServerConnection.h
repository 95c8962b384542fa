#pragma once

#include "catalog/Database.h"

#include <cstdint>
#include <libpq-fe.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace catalog {

struct ClearResult {
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

/// A value of a result, which must live as long.
[[nodiscard]] std::string_view valueAt(const Result& result, int row, int column);

/// A database of a PostgreSQL server, connected. Used by one thread of one process; a forked process must leave it
/// alone. All functions throw `DatabaseFailure` with advice, and `std::bad_alloc`.
class ServerConnection {
public:
    /// `target` is a connection string of libpq.
    explicit ServerConnection(const std::string& target);

    /// Throws that the database, as `what` goes on, cannot be used.
    [[noreturn]] void refuse(const std::string& what, const std::string& advice) const;

    /// Runs statements; the result is that of the last one.
    Result execute(const std::string& sql) const;
    /// Runs a statement with parameters, "$1" and so on.
    Result execute(const char* sql, const std::vector<std::string>& parameters) const;
    /// The number that a query gives; 0 without a row.
    [[nodiscard]] std::int64_t numberOf(const std::string& sql) const;
    /// A text in a statement.
    [[nodiscard]] std::string literal(std::string_view text) const;
    /// Runs a statement COPY ... FROM STDIN with lines in the form of texts.
    void copy(const std::string& statement, std::string_view lines) const;
    /// Passes on the answer row by row. Throws what `taker` throws.
    void query(const std::string& sql, AnswerTaker& taker) const;
    /// Runs `change` as a transaction.
    template <class Change>
    void transaction(Change change) const {
        execute("BEGIN");
        try {
            change();
            execute("COMMIT");
        } catch (...) {
            PQclear(PQexec(handle_.get(), "ROLLBACK"));
            throw;
        }
    }

private:
    struct Close {
        void operator()(PGconn* handle) const { PQfinish(handle); }
    };

    /// Throws what the server says of a failed statement.
    [[noreturn]] void fail(const PGresult* result) const;
    Result checked(PGresult* result) const;

    std::unique_ptr<PGconn, Close> handle_;
    std::string name_; // of the database
};

} // namespace catalog
