#pragma once

#include "catalog/tables.h"

#include <string>
#include <string_view>
#include <vector>

namespace catalog {

/// The statements of an SQL file: each ends with ";" at the end of a line, which is left out. Lines that begin with
/// "--" between statements are left out, too. Views of `sql`.
[[nodiscard]] std::vector<std::string_view> statementsOf(std::string_view sql);

/// The statements of the views.
[[nodiscard]] std::vector<std::string_view> viewStatements();

/// A name of a table or column in a statement.
[[nodiscard]] std::string quoted(std::string_view name);

/// The condition that a row of the table belongs to the model whose number `model`, an expression, is.
[[nodiscard]] std::string ofModel(const Table& table, std::string_view model);

/// A row of `guide`. Views of texts that live as long as the program.
struct Question {
    std::string_view name;
    std::string_view question;
    std::string_view sql;
};
[[nodiscard]] std::vector<Question> questions();

/// A row of `about`. The column is empty for a table, a view and a version.
struct Explanation {
    std::string_view name;
    std::string_view column;
    std::string text;
};
/// Explains all tables, their columns and the views, and tells the versions; `version` is that of petal.
[[nodiscard]] std::vector<Explanation> explanations(const std::string& version);

} // namespace catalog
