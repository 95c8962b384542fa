#include "Database.h"

#include <regex>
#include <sqlite3.h>
#include <stdexcept>

namespace {

class Sqlite final : public Database {
public:
    Sqlite() { clear(); }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;
    ~Sqlite() override { sqlite3_close(database_); }

    void clear() override {
        sqlite3_close(database_);
        sqlite3_open(":memory:", &database_);
        run("PRAGMA foreign_keys = ON");
    }

    std::string run(const std::string& statements) override {
        char* message = nullptr;
        sqlite3_exec(database_, statements.c_str(), nullptr, nullptr, &message);
        std::string fault = message != nullptr ? message : "";
        sqlite3_free(message);
        if (sqlite3_get_autocommit(database_) == 0) {
            sqlite3_exec(database_, "ROLLBACK", nullptr, nullptr, nullptr);
        }
        return fault;
    }

    Catalog catalog() override {
        Catalog catalog;
        for (const auto& row : rows("SELECT name, sql FROM sqlite_schema WHERE type = 'table'")) {
            FoundTable& table = catalog[row[0]];
            table.comment = row[1];
            fill(table, row[0], row[1]);
        }
        return catalog;
    }

    [[nodiscard]] std::string shell() const override { return "sqlite3 -bail :memory: < "; }

private:
    void fill(FoundTable& table, const std::string& name, const std::string& sql) {
        std::map<int, std::string> primary;
        for (const auto& row :
             rows("SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info(" + text(name) + ")")) {
            table.columns.push_back({row[0], row[1], row[2] == "1", false, row[3], ""});
            if (row[4] != "0") {
                primary[std::stoi(row[4])] = row[0];
            }
        }
        for (const auto& [place, column] : primary) {
            table.primary.push_back(column);
        }
        if (primary.size() == 1) {
            for (FoundTable::Column& column : table.columns) {
                column.isGenerated =
                    column.name == table.primary.front() && sqlite3_stricmp(column.type.c_str(), "integer") == 0;
            }
        }
        for (const auto& row : rows("SELECT name, origin FROM pragma_index_list(" + text(name) + ")")) {
            std::vector<std::string> columns;
            for (const auto& part : rows("SELECT name FROM pragma_index_info(" + text(row[0]) + ") ORDER BY seqno")) {
                columns.push_back(part[0]);
            }
            if (row[1] == "u") {
                table.uniques.insert(columns);
            } else if (row[1] == "c") {
                table.indexes[row[0]] = columns;
            }
        }
        std::map<std::string, FoundTable::Reference> references;
        for (const auto& row : rows("SELECT id, \"from\", \"table\", \"to\", on_delete FROM pragma_foreign_key_list(" +
                                    text(name) + ") ORDER BY id, seq")) {
            FoundTable::Reference& reference = references[row[0]];
            reference.columns.push_back(row[1]);
            reference.table = row[2];
            reference.keyColumns.push_back(row[3]);
            reference.cascades = row[4] == "CASCADE";
            reference.isDeferred = true; // no pragma tells; the rows do
        }
        for (const auto& [id, reference] : references) {
            table.references.insert(reference);
        }
        static const std::regex check("CONSTRAINT (\"(?:[^\"]|\"\")+\"|\\w+) (CHECK \\(.*)");
        for (std::sregex_iterator found(sql.begin(), sql.end(), check); found != std::sregex_iterator(); ++found) {
            std::string checkName = (*found)[1];
            if (checkName.front() == '"') {
                checkName = std::regex_replace(checkName.substr(1, checkName.size() - 2), std::regex("\"\""), "\"");
            }
            table.checks[checkName] = (*found)[2];
        }
    }

    static std::string text(const std::string& name) {
        return "'" + std::regex_replace(name, std::regex("'"), "''") + "'";
    }

    std::vector<std::vector<std::string>> rows(const std::string& query) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_, query.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
        std::vector<std::vector<std::string>> rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            std::vector<std::string>& row = rows.emplace_back();
            for (int field = 0; field < sqlite3_column_count(statement); ++field) {
                const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(statement, field));
                row.emplace_back(value != nullptr ? value : "");
            }
        }
        sqlite3_finalize(statement);
        return rows;
    }

    sqlite3* database_ = nullptr;
};

} // namespace

std::unique_ptr<Database> openSqlite() {
    return std::make_unique<Sqlite>();
}
