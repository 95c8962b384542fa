#include "catalog/postgresql/ServerConnection.h"
#include "catalog/postgresql/openPostgresql.h"
#include "catalog/texts.h"
#include "text/Embedded.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <regex>
#include <utility>

namespace catalog {

std::span<const text::Embedded> postgresqlTexts();

namespace {

constexpr std::size_t mostWaiting = 1 << 22; // bytes of rows
constexpr const char* otherDatabase = "Name another database, or another schema with options=-csearch_path=NAME.";

/// What a value looks like in the text form of COPY.
void appendValue(std::string& line, const Value& value) {
    switch (value.kind) {
    case Value::Kind::null:
        line += "\\N";
        return;
    case Value::Kind::integer: {
        std::array<char, 24> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value.number);
        line.append(digits.data(), end.ptr);
        return;
    }
    case Value::Kind::text:
        break;
    }
    std::string_view rest = value.text;
    while (!rest.empty()) {
        const std::size_t plain = std::min(rest.find_first_of("\\\t\n\r"), rest.size());
        line.append(rest.substr(0, plain));
        rest.remove_prefix(plain);
        if (!rest.empty()) {
            line += '\\';
            switch (rest.front()) {
            case '\t':
                line += 't';
                break;
            case '\n':
                line += 'n';
                break;
            case '\r':
                line += 'r';
                break;
            default:
                line += rest.front();
            }
            rest.remove_prefix(1);
        }
    }
}

/// A statement of the catalogue's schema, which is in the SQL of SQLite, in that of PostgreSQL. Numbers have as many
/// bits as there; texts are sorted by their bytes as there, so that both answer alike; keys and references are
/// declared when the rows are there.
std::string translated(std::string_view statement) {
    static const std::array replacements{
        std::pair(std::regex("\\bINTEGER\\b"), "BIGINT"),
        std::pair(std::regex("\\bTEXT\\b"), "TEXT COLLATE \"C\""),
        std::pair(std::regex(" PRIMARY KEY"), " NOT NULL"),
        std::pair(std::regex(R"( REFERENCES \w+ \(\w+\))"), ""),
    };
    std::string text(statement);
    for (const auto& [pattern, replacement] : replacements) {
        text = std::regex_replace(text, pattern, replacement);
    }
    return text;
}

/// The statements of the schema that begin so, translated. The search of SQLite has no place among them.
std::string schemaText(std::string_view beginning) {
    std::string script;
    for (const std::string_view statement : statementsOf(postgresqlTexts().front().text)) {
        if (statement.starts_with(beginning)) {
            script += translated(statement) + ";\n";
        }
    }
    return script;
}

// The parser of PostgreSQL would take a.b and a/b for names of hosts and files, as one word each. A tsvector holds less
// than a megabyte: texts of these lengths always fit.
constexpr const char* searchColumn = R"sql(
ALTER TABLE element ADD COLUMN search tsvector GENERATED ALWAYS AS (to_tsvector('simple',
    translate(left(name, 1000) || ' ' || left(coalesce(words, ''), 50000) || ' ' || left(coalesce(documentation, ''), 100000),
        '!"#$%&''()*+,-./:;<=>?@[\]^_`{|}~', repeat(' ', 32)))) STORED;
)sql";
constexpr const char* searchIndex = "CREATE INDEX element_search ON element USING gin (search);\n";
constexpr const char* searchView =
    "CREATE VIEW search AS SELECT id AS rowid, name, documentation, words, search FROM element;\n";
/// Declares the keys of the tables.
std::string keysText() {
    std::string script = "ALTER TABLE about ADD PRIMARY KEY (id);\nALTER TABLE guide ADD PRIMARY KEY (id);\n";
    for (const Table& table : tables()) {
        script += "ALTER TABLE " + quoted(table.name) + " ADD PRIMARY KEY (id);\n";
    }
    return script;
}

/// Declares the references between tables. They are checked at the end of a transaction, because a row may refer to one
/// that follows.
std::string referencesText() {
    std::string script;
    for (const Table& table : tables()) {
        for (const Column& column : table.columns) {
            if (column.kind == ColumnKind::reference) {
                script += "ALTER TABLE " + quoted(table.name) + " ADD FOREIGN KEY (" + quoted(column.name) +
                          ") REFERENCES " + quoted(tableOf(column.target).name) +
                          " (id) DEFERRABLE INITIALLY DEFERRED;\n";
            }
        }
    }
    return script;
}

class PostgresqlDatabase final : public Database {
public:
    PostgresqlDatabase(const std::string& target, Access access, const std::string& version);
    PostgresqlDatabase(const PostgresqlDatabase&) = delete;
    PostgresqlDatabase& operator=(const PostgresqlDatabase&) = delete;
    ~PostgresqlDatabase() override = default;

    void put(PlacedRows& rows, std::int64_t before) override;
    void setTimes(const KnownModel& model) override;
    void remove(std::int64_t model) override;
    void finish() override;
    bool isUnfinished() override { return !isFilled_; }
    void query(const std::string& sql, AnswerTaker& taker) override { connection_.query(sql, taker); }

private:
    void checkWhoOwns(Access access) const;
    void make(const std::string& version);
    void explain(const std::string& version);
    void copy(const Table& table, const std::string& lines);
    void putWaiting(std::int64_t before = 0);
    void removeRows(std::int64_t model);
    void makeIndexes();

    ServerConnection connection_;
    /// The rows of small models, as COPY takes them: twenty statements a model would take longer than its rows do.
    std::array<std::string, tableCount> waiting_;
    bool isFilled_ = false; // indexes, references and the search exist
};

PostgresqlDatabase::PostgresqlDatabase(const std::string& target, Access access, const std::string& version)
    : connection_(target) {
    if (valueAt(connection_.execute("SELECT current_schema()"), 0, 0).empty()) {
        connection_.refuse("has no schema for the tables", "Make the schema that its search path names.");
    }
    if (access == Access::read) {
        connection_.execute("SET default_transaction_read_only = on");
    } else {
        // A server that stops may forget the last models, but only whole ones; the next run puts them in again.
        connection_.execute("SET synchronous_commit = off");
        if (connection_.numberOf(
                "SELECT pg_try_advisory_lock(1348826220, current_schema()::regnamespace::oid::int)::int") == 0) {
            connection_.refuse("is in use by another petal", "Wait until that is done, and run petal again.");
        }
    }
    const bool isMade = connection_.numberOf("SELECT count(*) FROM pg_tables WHERE schemaname = current_schema() AND "
                                             "tablename IN ('about', 'guide', 'model')") == 3;
    if (!isMade) {
        checkWhoOwns(access);
        make(version);
        return;
    }
    const std::int64_t found = connection_.numberOf("SELECT text FROM about WHERE name = 'schema version'");
    if (found == 0) {
        connection_.refuse("has tables of others with the names of a catalogue", otherDatabase);
    }
    if (found != schemaVersion) {
        const bool isNewer = found > schemaVersion;
        connection_.refuse(std::string("has the catalogue of ") + (isNewer ? "a newer" : "an older") +
                               " petal (version " + std::to_string(found) + " of its tables)",
                           isNewer ? std::string("Use that petal. ") + otherDatabase : otherDatabase);
    }
    isFilled_ = connection_.numberOf(
                    "SELECT count(*) FROM pg_views WHERE schemaname = current_schema() AND viewname = 'search'") != 0;
    const Result said = connection_.execute("SELECT text FROM about WHERE name = 'petal version'");
    if (access == Access::write && (PQntuples(said.get()) == 0 || valueAt(said, 0, 0) != version)) {
        connection_.transaction([&] { explain(version); });
    }
}

/// A place without a catalogue must have nothing that would be taken for a part of one.
void PostgresqlDatabase::checkWhoOwns(Access access) const {
    if (access == Access::read) {
        connection_.refuse("has no catalogue", "Make one with 'petal catalog FOLDER -o' and the same name.");
    }
    std::string names = "'about', 'guide', 'search'";
    for (const Table& table : tables()) {
        names += ", " + connection_.literal(table.name);
    }
    const Result taken =
        connection_.execute("SELECT relname FROM pg_class WHERE relnamespace = current_schema()::regnamespace AND "
                            "relname IN (" +
                            names + ") ORDER BY relname");
    if (PQntuples(taken.get()) > 0) {
        connection_.refuse("has a table of others with the name of one of a catalogue: " +
                               std::string(valueAt(taken, 0, 0)),
                           otherDatabase);
    }
}

void PostgresqlDatabase::make(const std::string& version) {
    connection_.transaction([&] {
        connection_.execute(schemaText("CREATE TABLE") + searchColumn);
        for (const std::string_view view : viewStatements()) {
            connection_.execute(std::string(view));
        }
        explain(version);
    });
}

/// Fills `about` and `guide`, and comments the tables for the programs that show these.
void PostgresqlDatabase::explain(const std::string& version) {
    std::string script = "DELETE FROM about; DELETE FROM guide;\n";
    std::int64_t number = 0;
    for (const Explanation& explanation : explanations(version)) {
        script += "INSERT INTO about VALUES (" + std::to_string(++number) + ", " +
                  connection_.literal(explanation.name) + ", " +
                  (explanation.column.empty() ? "NULL" : connection_.literal(explanation.column)) + ", " +
                  connection_.literal(explanation.text) + ");\n";
    }
    number = 0;
    for (const Question& question : questions()) {
        script += "INSERT INTO guide VALUES (" + std::to_string(++number) + ", " + connection_.literal(question.name) +
                  ", " + connection_.literal(question.question) + ", " + connection_.literal(question.sql) + ");\n";
    }
    for (const Table& table : tables()) {
        script += "COMMENT ON TABLE " + quoted(table.name) + " IS " + connection_.literal(table.about) + ";\n";
        for (const Column& column : table.columns) {
            script += "COMMENT ON COLUMN " + quoted(table.name) + "." + quoted(column.name) + " IS " +
                      connection_.literal(column.about) + ";\n";
        }
    }
    connection_.execute(script);
}

void PostgresqlDatabase::copy(const Table& table, const std::string& lines) {
    std::string columns;
    for (const Column& column : table.columns) {
        columns += (columns.empty() ? "" : ", ") + quoted(column.name);
    }
    connection_.copy("COPY " + quoted(table.name) + " (" + columns + ") FROM STDIN", lines);
}

void PostgresqlDatabase::removeRows(std::int64_t model) {
    std::string script;
    const std::span<const Table> all = tables();
    for (auto table = all.rbegin(); table != all.rend(); ++table) { // those that refer to others come later
        script += "DELETE FROM " + quoted(table->name) + " WHERE " + ofModel(*table, std::to_string(model)) + ";\n";
    }
    connection_.execute(script);
}

void PostgresqlDatabase::put(PlacedRows& rows, std::int64_t before) {
    if (before != 0) {
        putWaiting();
        makeIndexes();
    }
    while (rows.next()) {
        std::string& line = waiting_[static_cast<std::size_t>(rows.table())];
        bool isFirst = true;
        for (const Value& value : rows.values()) {
            if (!std::exchange(isFirst, false)) {
                line += '\t';
            }
            appendValue(line, value);
        }
        line += '\n';
    }
    std::size_t bytes = 0;
    for (const std::string& lines : waiting_) {
        bytes += lines.size();
    }
    if (before != 0 || bytes > mostWaiting) {
        putWaiting(before);
    }
}

/// Puts the rows that wait into the tables; `before` is as of `put`.
void PostgresqlDatabase::putWaiting(std::int64_t before) {
    if (std::ranges::all_of(waiting_, [](const std::string& lines) { return lines.empty(); })) {
        return;
    }
    connection_.transaction([&] {
        if (before != 0) {
            removeRows(before);
        }
        for (const Table& table : tables()) {
            std::string& lines = waiting_[static_cast<std::size_t>(table.id)];
            if (!lines.empty()) {
                copy(table, lines);
                lines.clear();
            }
        }
    });
}

void PostgresqlDatabase::setTimes(const KnownModel& model) {
    connection_.transaction([&] {
        const auto set = [&](const char* sql, std::int64_t id, const std::string& modified) {
            connection_.execute(sql, {modified, std::to_string(id)});
        };
        set("UPDATE model SET modified = $1 WHERE id = $2", model.id, model.facts.modified);
        for (const KnownUnit& unit : model.units) {
            if (unit.isFound) {
                set("UPDATE unit SET modified = $1 WHERE id = $2", unit.id, unit.facts.modified);
            }
        }
    });
}

void PostgresqlDatabase::remove(std::int64_t model) {
    putWaiting();
    makeIndexes();
    connection_.transaction([&] { removeRows(model); });
}

/// Makes what a first load leaves for its end. Rows are inserted faster without it, and removed faster with it.
void PostgresqlDatabase::makeIndexes() {
    if (isFilled_) {
        return;
    }
    const bool hasKeys = // petals before this one declared them with the tables
        connection_.numberOf("SELECT count(*) FROM pg_index WHERE indrelid = 'model'::regclass AND indisprimary") != 0;
    connection_.transaction([&] {
        connection_.execute((hasKeys ? std::string() : keysText()) + schemaText("CREATE INDEX") + searchIndex +
                            referencesText() + searchView);
    });
    isFilled_ = true;
}

void PostgresqlDatabase::finish() {
    putWaiting();
    makeIndexes();
    connection_.execute("ANALYZE");
}

} // namespace

std::unique_ptr<Database> openPostgresql(const std::string& target, Access access, const std::string& version) {
    return std::make_unique<PostgresqlDatabase>(target, access, version);
}

} // namespace catalog
