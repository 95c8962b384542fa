#include "Catalogue.h"

#include <sqlite3.h>

Catalogue::Catalogue(const std::string& path) {
    sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE, nullptr);
}

Catalogue::~Catalogue() {
    sqlite3_close(handle_);
}

std::vector<Catalogue::Cells> Catalogue::ask(const std::string& sql) const {
    std::vector<Cells> rows;
    sqlite3_stmt* statement = nullptr;
    int code = sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr);
    while (code == SQLITE_OK || code == SQLITE_ROW) {
        code = sqlite3_step(statement);
        if (code != SQLITE_ROW) {
            break;
        }
        Cells& cells = rows.emplace_back();
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
            const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
            cells.push_back(bytes != nullptr ? std::string(bytes, length) : "~");
        }
    }
    sqlite3_finalize(statement);
    return code == SQLITE_DONE ? rows : std::vector<Cells>{{sqlite3_errmsg(handle_)}};
}

std::string Catalogue::one(const std::string& sql) const {
    const std::vector<Cells> rows = ask(sql);
    return rows.empty() ? "(none)" : rows.front().front();
}

std::multiset<std::string> Catalogue::content() const {
    using namespace catalog;
    std::map<std::string, std::string> names; // what identifies a row, by space of numbers and number
    const auto space = [](TableId table) { return std::string(tableOf(numberedBy(table)).name) + " "; };
    for (const Cells& row : ask("SELECT id, path FROM model")) {
        names["model " + row[0]] = row[1];
    }
    for (const Cells& row :
         ask("SELECT element.id, path, element_id FROM element JOIN model ON model.id = element.model")) {
        names["element " + row[0]] = row[1] + "#" + row[2];
    }
    for (const Cells& row :
         ask("SELECT source_object.id, path, coalesce(file, ''), line, kind, source_object.name FROM "
             "source_object JOIN model ON model.id = source_object.model")) {
        names["source_object " + row[0]] = row[1] + "#" + row[2] + "#" + row[3] + row[4] + row[5];
    }
    std::multiset<std::string> rows;
    for (const Table& table : tables()) {
        for (const Cells& row : ask("SELECT * FROM " + std::string(table.name))) {
            std::string text(table.name);
            for (std::size_t column = 0; column < row.size() && column < table.columns.size(); ++column) {
                const Column& one = table.columns[column];
                const bool isReference = one.kind == ColumnKind::reference && row[column] != "~";
                const std::string value = one.kind == ColumnKind::key ? ""
                                          : isReference               ? names[space(one.target) + row[column]]
                                                                      : row[column];
                text.append("|").append(isReference && value.empty() ? "nothing" : value);
            }
            rows.insert(std::move(text));
        }
    }
    return rows;
}

std::string Catalogue::faults() const {
    const std::string integrity = one("PRAGMA integrity_check");
    const std::string references = one("PRAGMA foreign_key_check");
    const bool isSearched = one("SELECT count(*) FROM sqlite_schema WHERE name = 'search'") == "1";
    const std::string search =
        isSearched ? one("INSERT INTO search (search, rank) VALUES ('integrity-check', 1)") : "(none)";
    return (integrity == "ok" ? "" : integrity) + (references == "(none)" ? "" : references) +
           (search == "(none)" ? "" : search);
}
