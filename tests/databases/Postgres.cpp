#include "Database.h"
#include "PostgresServer.h"

#include <libpq-fe.h>
#include <stdexcept>

namespace {

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

class Postgres final : public Database {
public:
    explicit Postgres(std::unique_ptr<PostgresServer> server)
        : server_(std::move(server)), connection_(PQconnectdb(server_->words().c_str())) {
        if (PQstatus(connection_) != CONNECTION_OK) {
            throw std::runtime_error(PQerrorMessage(connection_));
        }
        PQsetNoticeProcessor(
            connection_, [](void* to, const char* text) { static_cast<Postgres*>(to)->notices_ += text; }, this);
    }
    Postgres(const Postgres&) = delete;
    Postgres& operator=(const Postgres&) = delete;
    ~Postgres() override { PQfinish(connection_); }

    void clear() override {
        const std::string schema = "s" + std::to_string(++count_);
        run("CREATE SCHEMA " + schema + "; SET search_path = " + schema);
    }

    std::string run(const std::string& statements) override {
        notices_.clear();
        const Result result(PQexec(connection_, statements.c_str()), PQclear);
        const ExecStatusType status = PQresultStatus(result.get());
        std::string fault = status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY
                                ? notices_
                                : PQresultErrorMessage(result.get());
        if (PQtransactionStatus(connection_) != PQTRANS_IDLE) {
            const Result ended(PQexec(connection_, "ROLLBACK"), PQclear);
        }
        return fault;
    }

    Catalog catalog() override {
        Catalog catalog;
        for (const auto& row :
             rows("SELECT c.relname, obj_description(c.oid, 'pg_class') FROM pg_class c WHERE " + here)) {
            catalog[row[0]].comment = row[1];
        }
        for (
            const auto& row : rows(
                "SELECT c.relname, a.attname, format_type(a.atttypid, a.atttypmod), a.attnotnull, a.attidentity <> '', "
                "pg_get_expr(d.adbin, d.adrelid), col_description(c.oid, a.attnum) FROM pg_class c JOIN pg_attribute a "
                "ON a.attrelid = c.oid LEFT JOIN pg_attrdef d ON d.adrelid = c.oid AND d.adnum = a.attnum WHERE "
                "a.attnum > 0 AND " +
                here + " ORDER BY c.oid, a.attnum")) {
            catalog[row[0]].columns.push_back({row[1], row[2], row[3] == "t", row[4] == "t", row[5], row[6]});
        }
        for (const auto& row : rows(
                 "SELECT c.relname, k.contype, k.conname, (SELECT string_agg(a.attname, E'\\x01' ORDER BY x.i) FROM "
                 "unnest(k.conkey) WITH ORDINALITY x(n, i) JOIN pg_attribute a ON a.attrelid = k.conrelid AND a.attnum "
                 "= x.n), (SELECT relname FROM pg_class f WHERE f.oid = k.confrelid), (SELECT string_agg(a.attname, "
                 "E'\\x01' ORDER BY x.i) FROM unnest(k.confkey) WITH ORDINALITY x(n, i) JOIN pg_attribute a ON "
                 "a.attrelid = k.confrelid AND a.attnum = x.n), k.confdeltype = 'c', k.condeferred, "
                 "pg_get_constraintdef(k.oid) FROM pg_constraint k JOIN pg_class c ON c.oid = k.conrelid WHERE " +
                 here)) {
            FoundTable& table = catalog[row[0]];
            if (row[1] == "p") {
                table.primary = split(row[3]);
            } else if (row[1] == "u") {
                table.uniques.insert(split(row[3]));
            } else if (row[1] == "f") {
                table.references.insert({split(row[3]), row[4], split(row[5]), row[6] == "t", row[7] == "t"});
            } else {
                table.checks[row[2]] = row[8];
            }
        }
        for (const auto& row :
             rows("SELECT c.relname, i.relname, (SELECT string_agg(a.attname, E'\\x01' ORDER BY x.i) FROM "
                  "unnest(x.indkey) WITH ORDINALITY x(n, i) JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum = "
                  "x.n) FROM pg_index x JOIN pg_class c ON c.oid = x.indrelid JOIN pg_class i ON i.oid = x.indexrelid "
                  "WHERE NOT x.indisunique AND " +
                  here)) {
            catalog[row[0]].indexes[row[1]] = split(row[2]);
        }
        return catalog;
    }

    [[nodiscard]] std::string shell() const override {
        return server_->getPrograms().string() + "/psql -X -q -v ON_ERROR_STOP=1 -U test -d postgres -h " +
               server_->getFolder().string() + " -f ";
    }

private:
    std::vector<std::vector<std::string>> rows(const std::string& query) {
        const Result result(PQexec(connection_, query.c_str()), PQclear);
        if (PQresultStatus(result.get()) != PGRES_TUPLES_OK) {
            throw std::runtime_error(PQresultErrorMessage(result.get()));
        }
        std::vector<std::vector<std::string>> rows(static_cast<std::size_t>(PQntuples(result.get())));
        for (int row = 0; row < PQntuples(result.get()); ++row) {
            for (int field = 0; field < PQnfields(result.get()); ++field) {
                rows[static_cast<std::size_t>(row)].emplace_back(PQgetvalue(result.get(), row, field));
            }
        }
        return rows;
    }

    static std::vector<std::string> split(const std::string& names) {
        std::vector<std::string> parts{""};
        for (const char byte : names) {
            if (byte == '\x01') {
                parts.emplace_back();
            } else {
                parts.back() += byte;
            }
        }
        return parts;
    }

    const std::string here = "c.relkind = 'r' AND c.relnamespace = current_schema()::regnamespace";
    std::unique_ptr<PostgresServer> server_;
    PGconn* connection_ = nullptr;
    std::string notices_;
    int count_ = 0;
};

} // namespace

std::unique_ptr<Database> startPostgres(std::string& missing) {
    std::unique_ptr<PostgresServer> server = PostgresServer::start(missing);
    return server != nullptr ? std::make_unique<Postgres>(std::move(server)) : nullptr;
}
