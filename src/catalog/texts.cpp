#include "catalog/texts.h"

#include "text/Embedded.h"

#include <algorithm>
#include <span>

namespace catalog {

std::span<const text::Embedded> sqlTexts();

namespace {

constexpr std::string_view comment = "-- ";

std::string_view textOf(std::string_view name) {
    return std::ranges::find(sqlTexts(), name, &text::Embedded::name)->text;
}

/// The first line of the text.
std::string_view firstLine(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

/// Calls `take` with each statement and the comment lines before it.
template <class Take>
void split(std::string_view sql, Take take) {
    while (!sql.empty()) {
        const std::size_t end = std::min(sql.find(";\n"), sql.size());
        std::string_view statement = sql.substr(0, end);
        sql.remove_prefix(std::min(end + 2, sql.size()));
        std::string_view lastComment;
        while (!statement.empty()) {
            const std::string_view line = firstLine(statement);
            if (!line.empty() && !line.starts_with("--")) {
                break;
            }
            lastComment = line.empty() ? lastComment : line;
            statement.remove_prefix(std::min(line.size() + 1, statement.size()));
        }
        if (!statement.empty()) {
            take(statement, lastComment);
        }
    }
}

} // namespace

std::vector<std::string_view> statementsOf(std::string_view sql) {
    std::vector<std::string_view> statements;
    split(sql, [&](std::string_view statement, std::string_view) { statements.push_back(statement); });
    return statements;
}

std::vector<std::string_view> viewStatements() {
    return statementsOf(textOf("views"));
}

std::string quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

std::string ofModel(const Table& table, std::string_view model) {
    const Column& owner = table.columns[table.owner];
    if (owner.kind == ColumnKind::key || owner.target == TableId::model) {
        return std::string(owner.name) + " = " + std::string(model);
    }
    const Table& above = tableOf(numberedBy(owner.target));
    return std::string(owner.name) + " IN (SELECT id FROM " + std::string(above.name) + " WHERE " +
           ofModel(above, model) + ")";
}

std::vector<Question> questions() {
    std::vector<Question> all;
    split(textOf("guide"), [&](std::string_view statement, std::string_view title) {
        title.remove_prefix(comment.size());
        const std::size_t colon = title.find(": ");
        all.push_back({title.substr(0, colon), title.substr(colon + 2), statement});
    });
    return all;
}

std::vector<Explanation> explanations(const std::string& version) {
    std::vector<Explanation> all{
        {"petal version", "", version},
        {"schema version", "", std::to_string(schemaVersion)},
    };
    for (const Table& table : tables()) {
        all.push_back({table.name, "", std::string(table.about)});
        for (const Column& column : table.columns) {
            all.push_back({table.name, column.name, std::string(column.about)});
        }
    }
    for (const Thing& thing : otherThings()) {
        all.push_back({thing.name, "", std::string(thing.about)});
        for (const Detail& column : thing.columns) {
            all.push_back({thing.name, column.name, std::string(column.about)});
        }
    }
    return all;
}

} // namespace catalog
