#include "catalog/sqlite/RowInserts.h"

#include "catalog/texts.h"

#include <algorithm>
#include <string>

namespace catalog {

namespace {

std::string insertText(const Table& table, std::size_t rows) {
    std::string row = "(?";
    for (std::size_t column = 1; column < table.columns.size(); ++column) {
        row += ", ?";
    }
    row += ")";
    std::string sql = "INSERT INTO " + quoted(table.name) + " VALUES " + row;
    for (std::size_t further = 1; further < rows; ++further) {
        sql += ", " + row;
    }
    return sql;
}

} // namespace

void RowInserts::add(TableId table, std::span<const Value> values) {
    std::vector<Value>& all = values_[static_cast<std::size_t>(table)];
    for (const Value& value : values) {
        Value& kept = all.emplace_back(value);
        if (!value.text.empty()) {
            auto* const copy = static_cast<char*>(texts_.allocate(value.text.size(), 1));
            std::ranges::copy(value.text, copy);
            kept.text = {copy, value.text.size()};
        }
        length_ += sizeof(Value) + value.text.size();
    }
}

void RowInserts::insert() {
    try {
        for (std::size_t table = 0; table < tableCount; ++table) {
            insertAll(table);
        }
    } catch (...) {
        forget();
        throw;
    }
    forget();
}

void RowInserts::endStatements() {
    for (Prepared& prepared : statements_) {
        prepared.single.reset();
        prepared.several.reset();
    }
}

Statement& RowInserts::statementFor(std::size_t table, std::size_t rows) {
    Prepared& prepared = statements_[table];
    std::optional<Statement>& statement = rows > 1 ? prepared.several : prepared.single;
    if (!statement) {
        statement.emplace(connection_, insertText(tables()[table], rows));
    }
    return *statement;
}

void RowInserts::insertAll(std::size_t table) {
    const std::size_t columns = tables()[table].columns.size();
    std::span<const Value> rest = values_[table];
    while (!rest.empty()) {
        const std::size_t rows = rest.size() >= rowsOfOne * columns ? rowsOfOne : 1;
        Statement& statement = statementFor(table, rows);
        int parameter = 0;
        for (const Value& value : rest.first(rows * columns)) {
            statement.bind(++parameter, value);
        }
        statement.run();
        rest = rest.subspan(rows * columns);
    }
}

void RowInserts::forget() {
    for (std::vector<Value>& values : values_) {
        values.clear();
    }
    texts_.release();
    length_ = 0;
}

} // namespace catalog
