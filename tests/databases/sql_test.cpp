// The scripts of the format sql in the systems that they are for: loaded, read back and filled with rows.

#include "Database.h"
#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/Shop.h"
#include "export/sql/Dialect.h"
#include "export/sql/SchemaScript.h"
#include "export/sql/makeSchema.h"
#include "support/HostileTexts.h"
#include "support/ImportedModel.h"
#include "support/InFolder.h"
#include "support/Written.h"
#include "support/skipWithout.h"
#include "text/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <numeric>
#include <regex>

namespace {

namespace sql = exporter::sql;
namespace fs = std::filesystem;

struct Choice {
    std::string inheritance;
    std::string key;
    std::string names = "snake";

    [[nodiscard]] std::vector<std::string> settings(const std::string& dialect) const {
        return {"dialect=" + dialect, "tables=all", "inheritance=" + inheritance, "key=" + key, "names=" + names};
    }
};

const std::vector<Choice> choices{{"joined", "natural"},   {"joined", "surrogate"}, {"single", "natural"},
                                  {"single", "surrogate"}, {"concrete", "natural"}, {"concrete", "surrogate"}};

sql::Schema schemaOf(const KelModel& model, const Choice& choice) {
    const exporter::ElementIds ids(model, nullptr);
    exporter::Omissions omissions;
    return sql::makeSchema(
        model,
        {.tables = "all",
         .inheritance = choice.inheritance,
         .key = choice.key,
         .names = {.isSnake = choice.names == "snake"},
         .types = {},
         .kinds = exporter::ClassKinds()},
        [&]() -> const exporter::ElementIds& { return ids; }, omissions);
}

std::vector<std::string> namesOf(const sql::Table& table, const sql::Columns& columns) {
    std::vector<std::string> names;
    std::ranges::transform(columns, std::back_inserter(names),
                           [&](std::uint32_t column) { return table.columns[column].name.text; });
    return names;
}

/// A type of a script as PostgreSQL's catalog has it.
std::string inCatalog(std::string type) {
    for (const auto& [ours, theirs] : std::initializer_list<std::pair<const char*, const char*>>{
             {"varchar", "character varying"}, {"char(", "character("}, {"timestamp", "timestamp without time zone"}}) {
        if (type.starts_with(ours)) {
            return type.replace(0, std::strlen(ours), theirs);
        }
    }
    return type == "time" ? "time without time zone" : type;
}

std::string quoted(const std::string& text, const char* quote) {
    return quote + std::regex_replace(text, std::regex(quote), std::string(quote) + quote) + quote;
}

/// The texts in quotes of a condition.
std::vector<std::string> valuesIn(const std::string& condition) {
    static const std::regex value("'((?:[^']|'')*)'");
    std::vector<std::string> values;
    const std::string list = condition.substr(std::min(condition.find(" IN "), condition.find(" = ANY ")) + 1);
    for (std::sregex_iterator found(list.begin(), list.end(), value); found != std::sregex_iterator(); ++found) {
        values.push_back(std::regex_replace((*found)[1].str(), std::regex("''"), "'"));
    }
    return values;
}

std::string withoutNul(std::string text) {
    text = text::repairedUtf8(text);
    for (std::size_t at = text.find('\0'); at != std::string::npos; at = text.find('\0')) {
        text.replace(at, 1, "\xEF\xBF\xBD");
    }
    return text;
}

/// Compares a catalog with the schema that was loaded.
class Comparison {
public:
    Comparison(const sql::Schema& schema, const Catalog& catalog, const sql::Dialect& dialect)
        : schema_(schema), catalog_(catalog), isPostgres_(dialect.name == "postgresql"), dialect_(dialect) {}

    void compare() {
        EXPECT_EQ(catalog_.size(), schema_.tables.size());
        for (const sql::Table& table : schema_.tables) {
            SCOPED_TRACE(table.name.text);
            const auto found = catalog_.find(table.name.text);
            ASSERT_NE(found, catalog_.end());
            compareColumns(table, found->second);
            compareKeys(table, found->second);
        }
    }

private:
    void compareColumns(const sql::Table& table, const FoundTable& found) {
        ASSERT_EQ(found.columns.size(), table.columns.size());
        std::size_t checks = 0;
        for (std::size_t index = 0; index < table.columns.size(); ++index) {
            const sql::Column& column = table.columns[index];
            const FoundTable::Column& there = found.columns[index];
            EXPECT_EQ(there.name, column.name.text);
            EXPECT_EQ(there.isNotNull, column.isNotNull) << there.name;
            EXPECT_EQ(there.isGenerated, column.isGenerated) << there.name;
            EXPECT_EQ(there.byDefault.empty(), column.byDefault.kind == sql::Default::Kind::none) << there.name;
            if (isPostgres_) {
                EXPECT_EQ(there.type, inCatalog(sql::typeText(column.type, column.isKey, dialect_))) << there.name;
                EXPECT_EQ(there.comment, withoutNul(sql::commentOn(column)));
            }
            if (column.byDefault.kind == sql::Default::Kind::text) {
                EXPECT_EQ(there.byDefault.substr(0, there.byDefault.rfind('\'') + 1),
                          quoted(column.byDefault.value, "'"));
            }
            if (column.values != nullptr) {
                ++checks;
                ASSERT_TRUE(found.checks.contains(column.check)) << column.check;
                EXPECT_EQ(valuesIn(found.checks.at(column.check)), *column.values);
            }
        }
        EXPECT_EQ(found.checks.size(), checks);
        if (isPostgres_) {
            EXPECT_EQ(found.comment, withoutNul(sql::commentOn(table)));
        } else {
            for (const std::string& line : sql::commentLines(sql::commentOn(table))) {
                EXPECT_NE(found.comment.find("-- " + line), std::string::npos) << line;
            }
        }
    }

    void compareKeys(const sql::Table& table, const FoundTable& found) {
        EXPECT_EQ(found.primary, namesOf(table, table.primary->columns));
        std::set<std::vector<std::string>> uniques;
        for (const sql::Key& key : table.uniques) {
            uniques.insert(namesOf(table, key.columns));
        }
        EXPECT_EQ(found.uniques, uniques);
        std::multiset<FoundTable::Reference> references;
        for (const sql::Reference& reference : table.references) {
            const sql::Table& target = schema_.tables[reference.table];
            references.insert({namesOf(table, reference.columns), target.name.text,
                               namesOf(target, reference.keyColumns), reference.cascades, true});
            expectIndex(found, namesOf(table, reference.columns));
        }
        EXPECT_EQ(found.references, references);
        EXPECT_EQ(found.indexes.size(), table.indexes.size());
    }

    static void expectIndex(const FoundTable& found, const std::vector<std::string>& columns) {
        const auto begins = [&](const std::vector<std::string>& indexed) {
            return indexed.size() >= columns.size() && std::equal(columns.begin(), columns.end(), indexed.begin());
        };
        EXPECT_TRUE(begins(found.primary) || std::ranges::any_of(found.uniques, begins) ||
                    std::ranges::any_of(found.indexes, [&](const auto& index) { return begins(index.second); }))
            << columns.front() << " has no index";
    }

    const sql::Schema& schema_;
    const Catalog& catalog_;
    bool isPostgres_;
    const sql::Dialect& dialect_;
};

/// The statements that a schema must take or refuse.
class Rows {
public:
    explicit Rows(const sql::Schema& schema) : schema_(schema) {}

    /// A row for each table, each with the number 1 as far as its types have numbers.
    [[nodiscard]] std::string all() const {
        std::string statements;
        for (const sql::Table& table : schema_.tables) {
            statements += row(table);
        }
        return statements;
    }

    /// Such a row, but with another value in some columns, which must hold numbers or texts.
    static std::string row(const sql::Table& table, const sql::Columns& changed = {}) {
        std::string names;
        std::string values;
        for (std::uint32_t index = 0; index < table.columns.size(); ++index) {
            const sql::Column& column = table.columns[index];
            const bool isChanged = std::ranges::find(changed, index) != changed.end();
            names += (names.empty() ? "" : ", ") + quoted(column.name.text, "\"");
            values += (values.empty() ? "" : ", ") + (isChanged ? otherValueOf(column) : valueOf(column));
        }
        return "INSERT INTO " + quoted(table.name.text, "\"") + " (" + names + ") VALUES (" + values + ");\n";
    }

    static std::string otherValueOf(const sql::Column& column) { return valueOf(column) == "1" ? "7" : "'7'"; }

    static std::string valueOf(const sql::Column& column) {
        using enum sql::Family;
        if (column.values != nullptr) {
            return quoted(column.values->front(), "'");
        }
        switch (column.type.family) {
        case boolean:
            return "true";
        case date:
        case timestamp:
            return "'2001-01-01'";
        case time:
            return "'01:00'";
        case text:
        case fixedText:
        case binary:
            return "'1'";
        default:
            return "1";
        }
    }

private:
    const sql::Schema& schema_;
};

/// One model in both systems.
class SqlInDatabases : public InFolder {
protected:
    static void SetUpTestSuite() {
        postgres = startPostgres(missing);
        sqlite = openSqlite();
    }
    static void TearDownTestSuite() {
        postgres.reset();
        sqlite.reset();
    }
    void SetUp() override {
        if (postgres == nullptr) {
            rose::test::skipWithout(missing + "; install it with scripts/install-packages.sh --tests");
        }
    }

    static void load(const KelModel& model, const Choice& choice) {
        SCOPED_TRACE(choice.inheritance + " " + choice.key + " " + choice.names);
        const sql::Schema schema = schemaOf(model, choice);
        for (Database* database : {postgres.get(), sqlite.get()}) {
            const sql::Dialect& dialect = sql::findDialect(database == postgres.get() ? "postgresql" : "sqlite");
            SCOPED_TRACE(dialect.name);
            const std::string script = writtenAs("sql", model, choice.settings(std::string(dialect.name)));
            database->clear();
            ASSERT_EQ(database->run(script), "");
            const Catalog catalog = database->catalog();
            Comparison(schema, catalog, dialect).compare();
            if (!schema.tables.empty()) {
                const std::string again = database->run(script);
                EXPECT_NE(again.find("already exists"), std::string::npos) << again;
                EXPECT_NE(again.find(schema.tables.front().name.text), std::string::npos) << again;
            }
            tryRows(schema, *database);
        }
    }

    /// The statement must break a constraint, at once or when the transaction ends.
    static void refuse(Database& database, const std::string& statement) {
        const std::string fault = database.run("BEGIN;\n" + statement + "COMMIT;");
        static const std::regex broken("violates|constraint failed|datatype mismatch"); // the last: a key that is NULL
        EXPECT_TRUE(std::regex_search(fault, broken)) << statement << fault;
    }

    static void tryRows(const sql::Schema& schema, Database& database) {
        const Rows rows(schema);
        ASSERT_EQ(database.run("BEGIN;\n" + rows.all() + "COMMIT;"), "");
        for (const sql::Table& table : schema.tables) {
            SCOPED_TRACE(table.name.text);
            refuse(database, Rows::row(table)); // the same primary key
            for (const sql::Key& key : table.uniques) {
                const bool isApart = std::ranges::none_of(key.columns, [&](std::uint32_t column) {
                    return std::ranges::find(table.primary->columns, column) != table.primary->columns.end();
                });
                if (isApart) {
                    refuse(database, Rows::row(table, table.primary->columns));
                }
            }
            for (const sql::Column& column : table.columns) {
                if (column.values != nullptr) {
                    refuse(database, update(table, column, "'no such value'"));
                }
                if (column.isNotNull) {
                    refuse(database, update(table, column, "NULL"));
                }
            }
            for (const sql::Reference& reference : table.references) {
                const sql::Column& column = table.columns[reference.columns.front()];
                refuse(database, update(table, column, Rows::otherValueOf(column)));
            }
        }
    }

    /// In the shells a line can also be a command.
    void loadInShell(const Database& database, const std::string& script) const {
        const std::string command = database.shell() + put("script.sql", script) + " >" + pathOf("told") + " 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0);
        EXPECT_EQ(get("told"), "");
    }

    static std::string update(const sql::Table& table, const sql::Column& column, const std::string& value) {
        return "UPDATE " + quoted(table.name.text, "\"") + " SET " + quoted(column.name.text, "\"") + " = " + value +
               ";\n";
    }

    inline static std::unique_ptr<Database> postgres;
    inline static std::unique_ptr<Database> sqlite;
    inline static std::string missing;
};

std::vector<std::string> modelsIn(const std::string& folder) {
    std::vector<std::string> models;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".mdl") {
            models.push_back(entry.path().string());
        }
    }
    std::ranges::sort(models);
    return models;
}

TEST_F(SqlInDatabases, ExamplesLoadAndHoldRows) {
    for (const std::string& path : modelsIn(PETAL_EXAMPLES)) {
        SCOPED_TRACE(path);
        const ImportedModel imported = ImportedModel::ofFile(path);
        for (const Choice& choice : choices) {
            load(imported.model, choice);
        }
    }
}

TEST_F(SqlInDatabases, RealModelsLoadAndHoldRows) {
    if (std::string_view(PETAL_REAL_MODELS).empty()) {
        GTEST_SKIP() << "no real models: configure with -DPETAL_REAL_MODELS=FOLDER";
    }
    for (const std::string& path : modelsIn(PETAL_REAL_MODELS)) {
        SCOPED_TRACE(path);
        const ImportedModel imported = ImportedModel::ofFile(path);
        for (const Choice& choice : choices) {
            load(imported.model, choice);
        }
    }
}

/// A model with the text wherever a text can be.
void addHostile(KelDesignPackage& package, const std::string& text, int number) {
    KelDesignPackage& own = addPackage(package, text.c_str());
    auto& one = addElement<KelClass>(own, text.c_str());
    auto& other = addElement<KelClass>(own, ("Other" + std::to_string(number)).c_str());
    auto& kinds = addElement<KelClass>(own, ("Kinds" + text).c_str());
    kinds.stereotype = "enumeration";
    kinds.addAttribute(named<KelAttribute>(text.c_str()));
    one.description = text.c_str();
    one.stereotype = text.c_str();
    one.addNote(note(text.c_str()));
    auto* attribute = named<KelAttribute>(text.c_str());
    one.addAttribute(attribute);
    attribute->description = text.c_str();
    attribute->initialValue = ("\"" + text + "\"").c_str();
    auto& link = addElement<KelAssociation>(own, text.c_str());
    addRole(link, text.c_str(), &one).multiplicity = "n";
    addRole(link, text.c_str(), &other).multiplicity = "n";
}

TEST_F(SqlInDatabases, HostileTextsStayTexts) {
    KelModel model;
    model.setName("a\n;DROP TABLE x;--");
    KelDesignPackage& package = addPackage(model, "P");
    int number = 0;
    for (const std::string_view text : hostileTexts) {
        addHostile(package, std::string(text), number++);
    }
    addHostile(package, longHostileText(), number++);
    for (const char* name : {"xmin", "PgClass", "sqlite_master", "order", "Constraint", "Kind", "T_T_id_seq", "T",
                             "pk_T", "订单订单订单订单订单订单订单订单订单订单订单订单", "\\copy", ".shell ls", "go"}) {
        addHostile(package, name, number++);
    }
    for (const Choice& choice : choices) {
        load(model, choice);
    }
    load(model, {"joined", "natural", "asis"});
    loadInShell(*postgres, writtenAs("sql", model));
    loadInShell(*sqlite, writtenAs("sql", model, {"dialect=sqlite"}));
}

} // namespace
