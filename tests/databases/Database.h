#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What a database says of a table in it.
struct FoundTable {
    struct Column {
        std::string name;
        std::string type; // as the system calls it
        bool isNotNull = false;
        bool isGenerated = false;
        std::string byDefault; // the expression; empty for none
        std::string comment;
    };
    struct Reference {
        std::vector<std::string> columns;
        std::string table;
        std::vector<std::string> keyColumns;
        bool cascades = false;
        bool isDeferred = false;

        auto operator<=>(const Reference&) const = default;
    };

    std::vector<Column> columns;
    std::vector<std::string> primary;
    std::set<std::vector<std::string>> uniques;
    std::multiset<Reference> references;
    std::map<std::string, std::string> checks; // conditions by name; the system's own form
    std::map<std::string, std::vector<std::string>> indexes;
    std::string comment;
};

using Catalog = std::map<std::string, FoundTable>;

/// A real database system, and a place in it for one script at a time.
class Database {
public:
    virtual ~Database() = default;

    /// Forgets what was loaded before.
    virtual void clear() = 0;
    /// Runs the statements; returns what went wrong, a notice or a warning included, or an empty text. A transaction
    /// that they left open is given up.
    virtual std::string run(const std::string& statements) = 0;
    [[nodiscard]] virtual Catalog catalog() = 0;
    /// The command of the system's shell, which the path of a script completes; it stops at the first fault.
    [[nodiscard]] virtual std::string shell() const = 0;
};

/// A server in a temporary folder, reached by a socket there. Null when PostgreSQL is not installed; the reason is
/// written to `missing`.
[[nodiscard]] std::unique_ptr<Database> startPostgres(std::string& missing);
[[nodiscard]] std::unique_ptr<Database> openSqlite();
