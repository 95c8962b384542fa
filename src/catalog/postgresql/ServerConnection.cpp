#include "catalog/postgresql/ServerConnection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace catalog {

std::string_view valueAt(const Result& result, int row, int column) {
    return {PQgetvalue(result.get(), row, column), static_cast<std::size_t>(PQgetlength(result.get(), row, column))};
}

namespace {

/// A number of a result; 0 for null.
std::int64_t numberAt(const Result& result, int row, int column) {
    const std::string_view digits = valueAt(result, row, column);
    std::int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

constexpr const char* goesOn = "Run petal again then: it goes on where it was.";

/// A kind of failure that PostgreSQL tells by the first characters of a code, and what helps.
struct KnownFailure {
    std::string_view code;
    std::string_view text;
    std::string_view advice;
};
constexpr std::array knownFailures{
    KnownFailure{"42501", "must not be changed", "Ask its owner for the right to make and change tables."},
    KnownFailure{"25006", "must not be changed", "Name the server that takes changes; this one is a copy of it."},
    KnownFailure{"53100", "cannot be written: the server's disk is full",
                 "Make room and run petal again: it goes on where it was."},
    KnownFailure{"53", "lacks room, memory or connections", goesOn},
    KnownFailure{"55P03", "is in use by another program", "Wait until that is done and run petal again."},
    KnownFailure{"40", "is in use by another program", "Wait until that is done and run petal again."},
    KnownFailure{"57P", "is being shut down", "Start the server again. Run petal again then: it goes on where it was."},
    KnownFailure{"08", "cannot be reached any more", goesOn},
};

/// Calls `PQgetResult` until there is no more, so that the connection takes the next statement.
class Answer {
public:
    explicit Answer(PGconn* handle) : handle_(handle) {}
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;
    ~Answer() {
        while (PGresult* const result = PQgetResult(handle_)) {
            PQclear(result);
        }
    }

private:
    PGconn* handle_;
};

Value answerValue(const Result& result, int column) {
    if (PQgetisnull(result.get(), 0, column) != 0) {
        return {};
    }
    constexpr std::array<Oid, 4> numeric{20, 21, 23, 1700}; // int8, int2, int4, numeric
    const std::string_view text = valueAt(result, 0, column);
    if (std::ranges::count(numeric, PQftype(result.get(), column)) != 0 && text.find('.') == std::string_view::npos) {
        return {.kind = Value::Kind::integer, .number = numberAt(result, 0, column), .text = {}};
    }
    return {.kind = Value::Kind::text, .number = 0, .text = text};
}

} // namespace

ServerConnection::ServerConnection(const std::string& target) {
    const std::array<const char*, 4> words{"dbname", "client_encoding", "fallback_application_name", nullptr};
    const std::array<const char*, 4> values{target.c_str(), "UTF8", "petal", nullptr};
    constexpr int expandName = 1;
    handle_.reset(PQconnectdbParams(words.data(), values.data(), expandName));
    if (handle_ == nullptr) {
        throw std::bad_alloc();
    }
    if (PQstatus(handle_.get()) != CONNECTION_OK) {
        std::string text = PQerrorMessage(handle_.get());
        text.resize(text.find_last_not_of('\n') + 1);
        throw DatabaseFailure("the database cannot be reached: " + text,
                              "Check the name, and that the server runs and lets you in; 'psql' takes the same words.");
    }
    PQsetNoticeProcessor(
        handle_.get(), [](void*, const char*) {}, nullptr);
    name_ = PQdb(handle_.get());
    if (std::string_view(PQparameterStatus(handle_.get(), "server_encoding")) != "UTF8") {
        refuse("does not hold the characters of all languages",
               "Make one that does: CREATE DATABASE name ENCODING 'UTF8' TEMPLATE template0.");
    }
}

void ServerConnection::refuse(const std::string& what, const std::string& advice) const {
    throw DatabaseFailure("the database '" + name_ + "' " + what, advice);
}

Result ServerConnection::execute(const std::string& sql) const {
    return checked(PQexec(handle_.get(), sql.c_str()));
}

Result ServerConnection::execute(const char* sql, const std::vector<std::string>& parameters) const {
    std::vector<const char*> texts(parameters.size());
    std::ranges::transform(parameters, texts.begin(), &std::string::c_str);
    return checked(
        PQexecParams(handle_.get(), sql, static_cast<int>(texts.size()), nullptr, texts.data(), nullptr, nullptr, 0));
}

std::int64_t ServerConnection::numberOf(const std::string& sql) const {
    const Result result = execute(sql);
    return PQntuples(result.get()) > 0 ? numberAt(result, 0, 0) : 0;
}

void ServerConnection::fail(const PGresult* result) const {
    if (PQstatus(handle_.get()) != CONNECTION_OK) {
        refuse("cannot be reached any more", "Start the server again. Run petal again then: it goes on where it was.");
    }
    const char* field = result != nullptr ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    const std::string_view code = field != nullptr ? field : "";
    const char* primary = result != nullptr ? PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
    const std::string text = primary != nullptr ? primary : PQerrorMessage(handle_.get());
    for (const KnownFailure& known : knownFailures) {
        if (code.starts_with(known.code)) {
            refuse(std::string(known.text) + ": " + text, std::string(known.advice));
        }
    }
    refuse("refuses: " + text, "");
}

Result ServerConnection::checked(PGresult* result) const {
    Result owned(result);
    switch (PQresultStatus(result)) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_SINGLE_TUPLE:
    case PGRES_EMPTY_QUERY:
    case PGRES_COPY_IN:
        return owned;
    default:
        fail(result);
    }
}

std::string ServerConnection::literal(std::string_view text) const {
    char* const escaped = PQescapeLiteral(handle_.get(), text.data(), text.size());
    if (escaped == nullptr) {
        fail(nullptr);
    }
    const std::unique_ptr<char, decltype(&PQfreemem)> owned(escaped, PQfreemem);
    return escaped;
}

void ServerConnection::copy(const std::string& statement, std::string_view lines) const {
    execute(statement);
    constexpr std::size_t piece = 1 << 20; // libpq takes lengths as int
    while (!lines.empty()) {
        const std::string_view next = lines.substr(0, piece);
        if (PQputCopyData(handle_.get(), next.data(), static_cast<int>(next.size())) != 1) {
            fail(nullptr);
        }
        lines.remove_prefix(next.size());
    }
    if (PQputCopyEnd(handle_.get(), nullptr) != 1) {
        fail(nullptr);
    }
    while (PGresult* const result = PQgetResult(handle_.get())) {
        checked(result);
    }
}

void ServerConnection::query(const std::string& sql, AnswerTaker& taker) const {
    if (PQsendQuery(handle_.get(), sql.c_str()) != 1) {
        fail(nullptr);
    }
    const Answer answer(handle_.get());
    PQsetSingleRowMode(handle_.get());
    bool isFirst = true;
    std::vector<Value> values;
    while (PGresult* const next = PQgetResult(handle_.get())) {
        const Result result = checked(next);
        const int count = PQnfields(result.get());
        if (std::exchange(isFirst, false)) {
            std::vector<std::string> names;
            names.reserve(static_cast<std::size_t>(count));
            for (int column = 0; column < count; ++column) {
                names.emplace_back(PQfname(result.get(), column));
            }
            taker.columns(names);
            values.resize(names.size());
        }
        if (PQntuples(result.get()) == 0) {
            continue;
        }
        for (int column = 0; column < count; ++column) {
            values[static_cast<std::size_t>(column)] = answerValue(result, column);
        }
        taker.row(values);
    }
}

} // namespace catalog
