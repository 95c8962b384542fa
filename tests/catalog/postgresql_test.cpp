// The catalogue in PostgreSQL beside that in SQLite, and a catalogue that several runs share.

#include "Catalogue.h"
#include "catalog/texts.h"
#include "databases/PostgresServer.h"
#include "petal/Shell.h"
#include "support/HostileTexts.h"
#include "support/RandomModelFile.h"

#include <algorithm>
#include <chrono>
#include <libpq-fe.h>
#include <thread>

namespace {

using Rows = std::vector<Catalogue::Cells>;

/// A connection to a database of the server.
class Session {
public:
    explicit Session(const std::string& words) : connection_(PQconnectdb(words.c_str())) {
        PQsetNoticeProcessor(
            connection_, [](void*, const char*) {}, nullptr);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { PQfinish(connection_); }

    /// As `Catalogue::ask`.
    [[nodiscard]] Rows ask(const std::string& sql) const {
        const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection_, sql.c_str()), PQclear);
        const ExecStatusType status = PQresultStatus(result.get());
        if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK) {
            return {{PQresultErrorMessage(result.get())}};
        }
        Rows rows(static_cast<std::size_t>(PQntuples(result.get())));
        for (int row = 0; row < PQntuples(result.get()); ++row) {
            for (int column = 0; column < PQnfields(result.get()); ++column) {
                const bool isNull = PQgetisnull(result.get(), row, column) != 0;
                rows[static_cast<std::size_t>(row)].emplace_back(isNull ? "~" : PQgetvalue(result.get(), row, column));
            }
        }
        return rows;
    }
    [[nodiscard]] std::string one(const std::string& sql) const {
        const Rows rows = ask(sql);
        return rows.empty() || rows.front().empty() ? "(none)" : rows.front().front();
    }

private:
    PGconn* connection_;
};

class ServerCatalog : public Shell {
protected:
    void SetUp() override {
        std::string missing;
        server_ = PostgresServer::start(missing);
        if (server_ == nullptr) {
            GTEST_SKIP() << missing;
        }
        std::filesystem::create_directory(pathOf("models"));
        for (const auto& entry : std::filesystem::directory_iterator(PETAL_EXAMPLES)) {
            if (entry.path().extension() == ".mdl") {
                std::filesystem::copy_file(entry.path(), pathOf("models") / entry.path().filename());
            }
        }
    }

    [[nodiscard]] std::filesystem::path pathOf(std::string_view name) const { return Shell::pathOf(name); }
    [[nodiscard]] const PostgresServer& server() const { return *server_; }
    [[nodiscard]] std::string quotedWords() const { return "'" + server_->words() + "'"; }

    void putRandom(int count) const {
        for (int seed = 0; seed < count; ++seed) {
            put("models/m" + std::to_string(seed) + ".mdl",
                "(object Petal\n    version 42\n    charSet 0)\n" +
                    RandomModelFile(static_cast<unsigned int>(seed), RandomModelFile::Kind::wild).getBody());
        }
    }
    /// Brings both catalogues up to date and expects them to say the same, down to the numbers.
    void expectSame(const std::string& summary, int status = 0) const {
        const Ended lite = run("$petal catalog models -o lite.db");
        const Ended pg = run("$petal catalog models -o " + quotedWords());
        EXPECT_EQ(lite.status, status);
        EXPECT_EQ(pg.status, status) << pg.errors;
        EXPECT_TRUE(has(pg.errors, summary));
        expectSameRows("lite.db", server_->words());
    }
    void expectSameRows(const std::string& file, const std::string& words) const {
        const Catalogue there(pathOf(file));
        const Session here(words);
        std::vector<std::string> names{"about", "guide"};
        for (const catalog::Table& table : catalog::tables()) {
            names.emplace_back(table.name);
        }
        for (const std::string& name : names) {
            std::string columns;
            for (const Catalogue::Cells& row : there.ask("SELECT name FROM pragma_table_info('" + name + "')")) {
                columns += (columns.empty() ? "\"" : ", \"") + row.front() + "\"";
            }
            const std::string rows = "SELECT " + columns + " FROM \"" + name + "\" ORDER BY 1, 2";
            EXPECT_EQ(here.ask(rows), there.ask(rows)) << name;
        }
        const std::string references = "SELECT count(*) FROM pg_constraint WHERE contype = 'f'";
        EXPECT_EQ(here.one(references), there.one("SELECT count(*) FROM sqlite_schema, pragma_foreign_key_list(name) "
                                                  "WHERE type = 'table' AND name NOT LIKE 'search%'"));
    }

private:
    std::unique_ptr<PostgresServer> server_;
};

TEST_F(ServerCatalog, SaysWhatTheFileSays) {
    putRandom(25);
    std::string classes;
    for (const std::string_view text : hostileTexts) {
        std::string escaped;
        for (const char byte : text) {
            escaped += byte == '"' || byte == '\\' ? std::string("\\") + byte : std::string(1, byte);
        }
        classes += "(object Class \"" + escaped + "\" documentation \"" + escaped + "\")\n";
    }
    put("models/hostile.mdl", "(object Petal version 42 charSet 0)\n(object Design \"Logical View\" root_category "
                              "(object Class_Category \"Logical View\" logical_models (list unit_reference_list " +
                                  classes +
                                  "(object Class \"CustomerOrderLine\" documentation \"see java.lang.String, " +
                                  std::string(300000, 'x') + " 订单明细\"))))\n");
    expectSame(" read, 0 unchanged");
    expectSame(": 0 read, ");
    for (const catalog::Question& question : catalog::questions()) {
        const std::string ask = "$petal catalog --json --ask " + std::string(question.name) + " ";
        const Ended lite = run(ask + "lite.db");
        EXPECT_EQ(lite.status, 0) << lite.errors;
        EXPECT_EQ(run(ask + quotedWords()).output, lite.output) << question.name;
    }
    const Session session(server().words());
    const auto found = [&](const std::string& word) {
        return session.one("SELECT string_agg(name, ' ' ORDER BY name) FROM search WHERE search @@ "
                           "to_tsquery('simple', '" +
                           word + "') AND name LIKE '%OrderLine'");
    };
    EXPECT_EQ(found("order"), "CustomerOrderLine");
    EXPECT_EQ(found("string"), "CustomerOrderLine");
    EXPECT_EQ(found("custom:*"), "CustomerOrderLine");

    std::filesystem::remove(pathOf("models/m3.mdl"));
    put("models/m4.mdl", "no model\n");
    put("models/hostile.mdl", get("models/m5.mdl"));
    expectSame("1 failed; dropped as gone: 1", 5);
    static_cast<void>(run("touch -d '2001-02-03 04:05:06' models/m7.mdl"));
    expectSame(": 0 read, ", 5);
}

TEST_F(ServerCatalog, GoesOnWhenTheServerWentAway) {
    putRandom(10);
    static_cast<void>(run("$petal catalog models -o lite.db -q"));
    {
        // The lock stops petal in the middle of a COPY.
        const Session session(server().words());
        ASSERT_EQ(run("$petal catalog models/bookshop.mdl -q -o " + quotedWords()).status, 0);
        static_cast<void>(session.ask("BEGIN; LOCK TABLE role IN ACCESS EXCLUSIVE MODE"));
        Ended ended;
        std::thread petal([&] { ended = run("$petal catalog models -q -o " + quotedWords()); });
        while (session.one("SELECT count(*) FROM pg_locks WHERE NOT granted") == "0") {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        server().stop();
        petal.join();
        EXPECT_EQ(ended.status, 6);
        EXPECT_TRUE(has(ended.errors, "'postgres' cannot be reached any more"));
        EXPECT_TRUE(has(ended.errors, "Run petal again then"));
    }
    EXPECT_EQ(run("$petal catalog models -q -o " + quotedWords()).status, 6);
    server().run();
    EXPECT_EQ(run("$petal catalog models -q -o " + quotedWords()).status, 0);
    const Session session(server().words());
    const Catalogue file(pathOf("lite.db"));
    EXPECT_EQ(session.ask("SELECT * FROM estate_totals"), file.ask("SELECT * FROM estate_totals"));
}

TEST_F(ServerCatalog, SaysWhyADatabaseCannotHoldIt) {
    const Session session(server().words());
    for (const char* name : {"latin", "alien", "newer", "locked", "unmade"}) {
        static_cast<void>(
            session.ask(std::string("CREATE DATABASE ") + name +
                        (std::string(name) == "latin" ? " ENCODING 'LATIN1' LOCALE 'C' TEMPLATE template0" : "")));
    }
    static_cast<void>(Session(server().words("alien")).ask("CREATE TABLE class (x int)"));
    const std::string write = "$petal catalog models -q -o ";
    ASSERT_EQ(run(write + "'" + server().words("newer") + "'").status, 0);
    static_cast<void>(
        Session(server().words("newer")).ask("UPDATE about SET text = '99' WHERE name = 'schema version'"));
    const Session other(server().words("locked"));
    static_cast<void>(other.ask("SELECT pg_advisory_lock(1348826220, current_schema()::regnamespace::oid::int)"));
    const auto words = [&](const char* name) { return "'" + server().words(name) + "'"; };
    expectRefusals("$petal catalog ",
                   {{"models -q -o " + words("nowhere"), 6, "database \"nowhere\" does not exist"},
                    {"models -q -o postgresql://nobody@/x?host=/nowhere", 6, "the database cannot be reached"},
                    {"models -q -o " + words("latin"), 6, "'latin' does not hold the characters of all languages"},
                    {"models -q -o " + words("alien"), 6,
                     "'alien' has a table of others with the name of one of a catalogue: class"},
                    {"models -q -o " + words("newer"), 6, "'newer' has the catalogue of a newer petal"},
                    {"models -q -o " + words("locked"), 6, "'locked' is in use by another petal"},
                    {"--ask models " + words("unmade"), 1, "'unmade' has no catalogue"}});
}

TEST_F(ServerCatalog, PartsMakeTheSameWhole) {
    putRandom(20);
    put("models/broken.mdl", "no model\n");
    EXPECT_EQ(run("$petal catalog models -q -o one.db").status, 5);
    if (run("command -v parallel").status == 0) {
        const Ended ended = run("seq 3 | parallel --will-cite $petal catalog models -q --part {}/3 -o part{}.db");
        EXPECT_TRUE(has(ended.errors, "1 of "));
    } else { // GNU parallel is not installed
        static_cast<void>(run("for k in 1 2 3; do $petal catalog models -q --part $k/3 -o part$k.db; done"));
    }
    std::size_t models = 0;
    for (const char* part : {"part1.db", "part2.db", "part3.db"}) {
        models += static_cast<std::size_t>(Catalogue(pathOf(part)).count("SELECT count(*) FROM model"));
    }
    const Catalogue one(pathOf("one.db"));
    EXPECT_EQ(models, static_cast<std::size_t>(one.count("SELECT count(*) FROM model")));
    EXPECT_EQ(run("$petal catalog --merge part3.db part1.db part2.db -q -o all.db").status, 5);
    EXPECT_EQ(Catalogue(pathOf("all.db")).content(), one.content());
    EXPECT_EQ(Catalogue(pathOf("all.db")).faults(), "");
    EXPECT_EQ(run("$petal catalog --merge part1.db part2.db part3.db part1.db -q -o " + quotedWords()).status, 5);
    EXPECT_EQ(run("$petal catalog --merge " + quotedWords() + " -q -o back.db").status, 5);
    EXPECT_EQ(Catalogue(pathOf("back.db")).content(), one.content());
    expectSameRows("back.db", server().words());

    // A model changes, and one goes.
    put("models/m1.mdl", get("models/m2.mdl"));
    std::filesystem::remove(pathOf("models/broken.mdl"));
    static_cast<void>(run("for k in 1 2 3; do $petal catalog models -q --part $k/3 -o part$k.db; done"));
    const Ended again = run("$petal catalog --merge part1.db part2.db part3.db -o all.db");
    EXPECT_EQ(again.status, 0);
    EXPECT_TRUE(has(again.errors, ": 1 written, "));
    EXPECT_TRUE(has(again.errors, " unchanged; dropped: 1"));
    EXPECT_EQ(run("$petal catalog models -q -o one.db").status, 0);
    EXPECT_EQ(Catalogue(pathOf("all.db")).content(), Catalogue(pathOf("one.db")).content());

    expectRefusals("$petal catalog ", {{"models --part 0/3 -o a.db", 2, "'0/3' is not K/N"},
                                       {"models --part 4/3 -o a.db", 2, "'4/3' is not K/N"},
                                       {"models --part 1 -o a.db", 2, "'1' is not K/N"},
                                       {"--merge part1.db", 2, "-o"},
                                       {"--merge part1.db all.db -o all.db", 2, "'all.db' is a part and the result"},
                                       {"--merge part1.db gone.db -o new.db", 1, "'gone.db' does not exist"}});
    put("models/m1.mdl", get("models/m3.mdl"));
    static_cast<void>(run("$petal catalog models -q -o later.db"));
    expectRefusals("$petal catalog ",
                   {{"--merge one.db later.db -o new.db", 1, "have different models of the path 'm1.mdl'"}});
}

} // namespace
