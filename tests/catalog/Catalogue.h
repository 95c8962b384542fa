#pragma once

#include "catalog/tables.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

struct sqlite3;

/// A catalogue in a file of SQLite, read without petal.
class Catalogue {
public:
    using Cells = std::vector<std::string>; // NULL is "~"

    explicit Catalogue(const std::string& path);
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;
    ~Catalogue();

    /// The rows of the answer; the failure, as a row of one cell, of a wrong statement.
    std::vector<Cells> ask(const std::string& sql) const;
    /// The first cell of the answer; "(none)" without a row.
    [[nodiscard]] std::string one(const std::string& sql) const;
    [[nodiscard]] int count(const std::string& sql) const { return std::stoi(one(sql)); }

    /// All that the tables say, numbers of rows aside: a reference is replaced by what identifies its target.
    [[nodiscard]] std::multiset<std::string> content() const;
    /// The faults that SQLite finds in the file, its references and its search; empty for none.
    [[nodiscard]] std::string faults() const;

private:
    sqlite3* handle_ = nullptr;
};
