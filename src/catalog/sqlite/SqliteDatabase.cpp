#include "catalog/sqlite/Connection.h"
#include "catalog/sqlite/RowInserts.h"
#include "catalog/sqlite/openSqlite.h"
#include "catalog/texts.h"
#include "text/Embedded.h"

namespace catalog {

std::span<const text::Embedded> sqliteTexts();

namespace {

constexpr int applicationId = 0x5065746C; // "Petl"; in the file's head
/// The rows, in bytes of memory, that wait for a transaction. A transaction for each small model would write the last
/// pages of all tables again and again.
constexpr std::size_t mostWaiting = std::size_t{1} << 20U;
constexpr const char* makeAnew = "Name another file, or delete this one and make it anew.";

/// Something in the catalogue's file that is made by a statement.
enum class Stage : std::uint8_t { first, afterRows };

Stage stageOf(std::string_view statement) {
    const bool isLate = statement.starts_with("CREATE INDEX") || statement.starts_with("CREATE VIRTUAL TABLE");
    return isLate ? Stage::afterRows : Stage::first;
}

std::string schemaText(Stage stage) {
    std::string script;
    for (const std::string_view statement : statementsOf(sqliteTexts().front().text)) {
        if (stageOf(statement) == stage) {
            script.append(statement).append(";\n");
        }
    }
    return script;
}

class SqliteDatabase final : public Database {
public:
    SqliteDatabase(const std::string& path, Access access, const std::string& version) : connection_(path, access) {
        open(access, version);
    }
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;
    ~SqliteDatabase() override = default;

    void put(PlacedRows& rows, std::int64_t before) override;
    void setTimes(const KnownModel& model) override;
    void remove(std::int64_t model) override;
    void finish() override;
    bool isUnfinished() override { return !connection_.has("search"); }
    void query(const std::string& sql, AnswerTaker& taker) override;

private:
    void open(Access access, const std::string& version);
    void make(const std::string& version);
    void explain(const std::string& version);
    /// Runs `change` as a transaction.
    template <class Change>
    void transaction(Change change);
    void startWriting();
    void removeRows(std::int64_t model);
    void makeIndexes();
    void index(const char* command, std::int64_t model);
    bool collect(PlacedRows& rows);
    void putWaiting();

    Connection connection_;
    RowInserts waiting_{connection_}; // the rows of small models
    bool isWriting_ = false;
    bool isSearched_ = false; // the search exists, and must be kept up to date
};

void SqliteDatabase::open(Access access, const std::string& version) {
    const bool isEmpty = connection_.numberOf("SELECT count(*) FROM sqlite_schema") == 0;
    const std::int64_t application = connection_.numberOf("PRAGMA application_id");
    const std::int64_t found = connection_.numberOf("PRAGMA user_version");
    if (isEmpty && application == 0 && found == 0 && access == Access::write) {
        make(version);
        return;
    }
    if (application != applicationId) {
        connection_.refuse("is not a catalogue of petal", makeAnew);
    }
    if (found > schemaVersion) {
        connection_.refuse("is a catalogue of a newer petal (version " + std::to_string(found) + " of its tables)",
                           "Use that petal, or name another file.");
    }
    if (found < schemaVersion) {
        connection_.refuse("is a catalogue of an older petal (version " + std::to_string(found) + " of its tables)",
                           "Delete the file and make it anew.");
    }
    isSearched_ = connection_.has("search");
    if (access == Access::write) {
        Statement said(connection_, "SELECT text FROM about WHERE name = 'petal version'");
        const bool isSame = said.step() && said.text(0) == version;
        said.reset();
        if (!isSame) {
            transaction([&] { explain(version); });
        }
    }
}

/// Fills `about` and `guide`.
void SqliteDatabase::explain(const std::string& version) {
    connection_.execute("DELETE FROM about; DELETE FROM guide;");
    Statement about(connection_, "INSERT INTO about (name, \"column\", text) VALUES (?, ?, ?)");
    for (const Explanation& explanation : explanations(version)) {
        about.bind(1, explanation.name);
        explanation.column.empty() ? about.bindNull(2) : about.bind(2, explanation.column);
        about.bind(3, explanation.text);
        about.run();
    }
    Statement guide(connection_, "INSERT INTO guide (name, question, sql) VALUES (?, ?, ?)");
    for (const Question& question : questions()) {
        guide.bind(1, question.name);
        guide.bind(2, question.question);
        guide.bind(3, question.sql);
        guide.run();
    }
}

void SqliteDatabase::make(const std::string& version) {
    transaction([&] {
        connection_.execute("PRAGMA application_id = " + std::to_string(applicationId));
        connection_.execute("PRAGMA user_version = " + std::to_string(schemaVersion));
        connection_.execute(schemaText(Stage::first));
        for (const std::string_view view : viewStatements()) {
            connection_.execute(std::string(view));
        }
        explain(version);
    });
}

/// Before the first change: an unchanged file keeps its bytes.
void SqliteDatabase::startWriting() {
    if (isWriting_) {
        return;
    }
    isWriting_ = true;
    // A commit that waits for the disk would take longer than a small model. The log of SQLite needs no waiting, and a
    // process may end at any moment.
    connection_.execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA wal_autocheckpoint = 4096;"
                        "PRAGMA cache_size = -65536; PRAGMA temp_store = MEMORY;");
}

template <class Change>
void SqliteDatabase::transaction(Change change) {
    startWriting();
    connection_.execute("BEGIN IMMEDIATE");
    try {
        change();
        connection_.execute("COMMIT");
    } catch (...) {
        connection_.tryTo("ROLLBACK");
        throw;
    }
}

/// Puts the texts of a model's elements into the search, or takes them out of it.
void SqliteDatabase::index(const char* command, std::int64_t model) {
    if (!isSearched_) {
        return;
    }
    const bool isPlain = *command == '\0';
    Statement statement(connection_, std::string("INSERT INTO search (") + (isPlain ? "" : "search, ") +
                                         "rowid, name, documentation, words) SELECT " + command +
                                         (isPlain ? "" : ", ") +
                                         "id, name, documentation, words FROM element WHERE model = ?");
    statement.bind(1, model);
    statement.run();
}

void SqliteDatabase::removeRows(std::int64_t model) {
    index("'delete'", model);
    const std::span<const Table> all = tables();
    for (auto table = all.rbegin(); table != all.rend(); ++table) { // those that refer to others come later
        Statement statement(connection_, "DELETE FROM " + quoted(table->name) + " WHERE " + ofModel(*table, "?1"));
        statement.bind(1, model);
        statement.run();
    }
}

void SqliteDatabase::put(PlacedRows& rows, std::int64_t before) {
    if (before != 0) {
        putWaiting();
        makeIndexes();
    }
    const bool mayWait = before == 0 && !isSearched_;
    if (mayWait && !collect(rows)) {
        return;
    }
    transaction([&] {
        if (before != 0) {
            removeRows(before);
        }
        while (collect(rows)) {
            waiting_.insert();
        }
        waiting_.insert();
        index("", rows.getModel());
    });
}

/// Adds rows to those that wait; returns whether there are too many before the last one.
bool SqliteDatabase::collect(PlacedRows& rows) {
    while (waiting_.getLength() <= mostWaiting) {
        if (!rows.next()) {
            return false;
        }
        waiting_.add(rows.table(), rows.values());
    }
    return true;
}

/// Puts the rows that wait into the tables.
void SqliteDatabase::putWaiting() {
    if (waiting_.getLength() > 0) {
        transaction([&] { waiting_.insert(); });
    }
}

void SqliteDatabase::setTimes(const KnownModel& model) {
    transaction([&] {
        const auto set = [&](const char* table, std::int64_t id, const std::string& modified) {
            Statement statement(connection_, "UPDATE " + quoted(table) + " SET modified = ? WHERE id = ?");
            statement.bind(1, modified);
            statement.bind(2, id);
            statement.run();
        };
        set("model", model.id, model.facts.modified);
        for (const KnownUnit& unit : model.units) {
            if (unit.isFound) {
                set("unit", unit.id, unit.facts.modified);
            }
        }
    });
}

void SqliteDatabase::remove(std::int64_t model) {
    putWaiting();
    makeIndexes();
    transaction([&] { removeRows(model); });
}

/// Makes what a first load leaves for its end. Rows are inserted faster without it, and removed faster with it.
void SqliteDatabase::makeIndexes() {
    if (isSearched_) {
        return;
    }
    transaction([&] {
        connection_.execute(schemaText(Stage::afterRows));
        connection_.execute("INSERT INTO search (search) VALUES ('rebuild')");
    });
    isSearched_ = true;
}

void SqliteDatabase::finish() {
    putWaiting();
    // Most pages of the indexes are new ones, which need no log. While others read the file, the log stays.
    waiting_.endStatements();
    connection_.tryTo("PRAGMA journal_mode = DELETE");
    isWriting_ = true;
    connection_.execute("PRAGMA cache_size = -65536; PRAGMA temp_store = MEMORY;");
    makeIndexes();
    transaction([&] { connection_.execute("PRAGMA analysis_limit = 400; ANALYZE;"); });
    connection_.tryTo("PRAGMA journal_mode = DELETE");
    isWriting_ = false;
}

void SqliteDatabase::query(const std::string& sql, AnswerTaker& taker) {
    Statement statement(connection_, sql);
    const int count = statement.columnCount();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int column = 0; column < count; ++column) {
        names.push_back(statement.columnName(column));
    }
    taker.columns(names);
    std::vector<Value> values(static_cast<std::size_t>(count));
    while (statement.step()) {
        for (int column = 0; column < count; ++column) {
            values[static_cast<std::size_t>(column)] = statement.value(column);
        }
        taker.row(values);
    }
}

} // namespace

std::unique_ptr<Database> openSqlite(const std::string& path, Access access, const std::string& version) {
    return std::make_unique<SqliteDatabase>(path, access, version);
}

} // namespace catalog
