#include "export/sql/Dialect.h"

#include "text/escape.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>

namespace exporter::sql {

namespace {

using namespace std::string_view_literals;
using enum Family;

/// Reserved, or reserved except as names of functions and types: pg_get_keywords() of version 15.
constexpr std::array postgresqlReserved{
    "all"sv,
    "analyse"sv,
    "analyze"sv,
    "and"sv,
    "any"sv,
    "array"sv,
    "as"sv,
    "asc"sv,
    "asymmetric"sv,
    "authorization"sv,
    "binary"sv,
    "both"sv,
    "case"sv,
    "cast"sv,
    "check"sv,
    "collate"sv,
    "collation"sv,
    "column"sv,
    "concurrently"sv,
    "constraint"sv,
    "create"sv,
    "cross"sv,
    "current_catalog"sv,
    "current_date"sv,
    "current_role"sv,
    "current_schema"sv,
    "current_time"sv,
    "current_timestamp"sv,
    "current_user"sv,
    "default"sv,
    "deferrable"sv,
    "desc"sv,
    "distinct"sv,
    "do"sv,
    "else"sv,
    "end"sv,
    "except"sv,
    "false"sv,
    "fetch"sv,
    "for"sv,
    "foreign"sv,
    "freeze"sv,
    "from"sv,
    "full"sv,
    "grant"sv,
    "group"sv,
    "having"sv,
    "ilike"sv,
    "in"sv,
    "initially"sv,
    "inner"sv,
    "intersect"sv,
    "into"sv,
    "is"sv,
    "isnull"sv,
    "join"sv,
    "lateral"sv,
    "leading"sv,
    "left"sv,
    "like"sv,
    "limit"sv,
    "localtime"sv,
    "localtimestamp"sv,
    "natural"sv,
    "not"sv,
    "notnull"sv,
    "null"sv,
    "offset"sv,
    "on"sv,
    "only"sv,
    "or"sv,
    "order"sv,
    "outer"sv,
    "overlaps"sv,
    "placing"sv,
    "primary"sv,
    "references"sv,
    "returning"sv,
    "right"sv,
    "select"sv,
    "session_user"sv,
    "similar"sv,
    "some"sv,
    "symmetric"sv,
    "system_user"sv,
    "table"sv,
    "tablesample"sv,
    "then"sv,
    "to"sv,
    "trailing"sv,
    "true"sv,
    "union"sv,
    "unique"sv,
    "user"sv,
    "using"sv,
    "variadic"sv,
    "verbose"sv,
    "when"sv,
    "where"sv,
    "window"sv,
    "with"sv,
};

/// SQLite's keywords of version 3.40, all of them: which ones a name may be differs between its versions.
constexpr std::array sqliteReserved{
    "abort"sv,
    "action"sv,
    "add"sv,
    "after"sv,
    "all"sv,
    "alter"sv,
    "always"sv,
    "analyze"sv,
    "and"sv,
    "as"sv,
    "asc"sv,
    "attach"sv,
    "autoincrement"sv,
    "before"sv,
    "begin"sv,
    "between"sv,
    "by"sv,
    "cascade"sv,
    "case"sv,
    "cast"sv,
    "check"sv,
    "collate"sv,
    "column"sv,
    "commit"sv,
    "conflict"sv,
    "constraint"sv,
    "create"sv,
    "cross"sv,
    "current"sv,
    "current_date"sv,
    "current_time"sv,
    "current_timestamp"sv,
    "database"sv,
    "default"sv,
    "deferrable"sv,
    "deferred"sv,
    "delete"sv,
    "desc"sv,
    "detach"sv,
    "distinct"sv,
    "do"sv,
    "drop"sv,
    "each"sv,
    "else"sv,
    "end"sv,
    "escape"sv,
    "except"sv,
    "exclude"sv,
    "exclusive"sv,
    "exists"sv,
    "explain"sv,
    "fail"sv,
    "filter"sv,
    "first"sv,
    "following"sv,
    "for"sv,
    "foreign"sv,
    "from"sv,
    "full"sv,
    "generated"sv,
    "glob"sv,
    "group"sv,
    "groups"sv,
    "having"sv,
    "if"sv,
    "ignore"sv,
    "immediate"sv,
    "in"sv,
    "index"sv,
    "indexed"sv,
    "initially"sv,
    "inner"sv,
    "insert"sv,
    "instead"sv,
    "intersect"sv,
    "into"sv,
    "is"sv,
    "isnull"sv,
    "join"sv,
    "key"sv,
    "last"sv,
    "left"sv,
    "like"sv,
    "limit"sv,
    "match"sv,
    "materialized"sv,
    "natural"sv,
    "no"sv,
    "not"sv,
    "nothing"sv,
    "notnull"sv,
    "null"sv,
    "nulls"sv,
    "of"sv,
    "offset"sv,
    "on"sv,
    "or"sv,
    "order"sv,
    "others"sv,
    "outer"sv,
    "over"sv,
    "partition"sv,
    "plan"sv,
    "pragma"sv,
    "preceding"sv,
    "primary"sv,
    "query"sv,
    "raise"sv,
    "range"sv,
    "recursive"sv,
    "references"sv,
    "regexp"sv,
    "reindex"sv,
    "release"sv,
    "rename"sv,
    "replace"sv,
    "restrict"sv,
    "returning"sv,
    "right"sv,
    "rollback"sv,
    "row"sv,
    "rows"sv,
    "savepoint"sv,
    "select"sv,
    "set"sv,
    "table"sv,
    "temp"sv,
    "temporary"sv,
    "then"sv,
    "ties"sv,
    "to"sv,
    "transaction"sv,
    "trigger"sv,
    "unbounded"sv,
    "union"sv,
    "unique"sv,
    "update"sv,
    "using"sv,
    "vacuum"sv,
    "values"sv,
    "view"sv,
    "virtual"sv,
    "when"sv,
    "where"sv,
    "window"sv,
    "with"sv,
    "without"sv,
};

/// The reserved words of Oracle's SQL, its pseudocolumns, and words that begin what is not a column in a table.
constexpr std::array oracleReserved{
    "access"sv,
    "add"sv,
    "all"sv,
    "alter"sv,
    "and"sv,
    "any"sv,
    "as"sv,
    "asc"sv,
    "audit"sv,
    "between"sv,
    "by"sv,
    "char"sv,
    "check"sv,
    "cluster"sv,
    "column"sv,
    "column_value"sv,
    "comment"sv,
    "compress"sv,
    "connect"sv,
    "constraint"sv,
    "foreign"sv,
    "period"sv,
    "primary"sv,
    "ref"sv,
    "references"sv,
    "scope"sv,
    "supplemental"sv,
    "create"sv,
    "current"sv,
    "date"sv,
    "decimal"sv,
    "default"sv,
    "delete"sv,
    "desc"sv,
    "distinct"sv,
    "drop"sv,
    "else"sv,
    "exclusive"sv,
    "exists"sv,
    "file"sv,
    "float"sv,
    "for"sv,
    "from"sv,
    "grant"sv,
    "group"sv,
    "having"sv,
    "identified"sv,
    "immediate"sv,
    "in"sv,
    "increment"sv,
    "index"sv,
    "initial"sv,
    "insert"sv,
    "integer"sv,
    "intersect"sv,
    "into"sv,
    "is"sv,
    "level"sv,
    "like"sv,
    "lock"sv,
    "long"sv,
    "maxextents"sv,
    "minus"sv,
    "mlslabel"sv,
    "mode"sv,
    "modify"sv,
    "nested_table_id"sv,
    "noaudit"sv,
    "nocompress"sv,
    "not"sv,
    "nowait"sv,
    "null"sv,
    "number"sv,
    "of"sv,
    "offline"sv,
    "on"sv,
    "online"sv,
    "option"sv,
    "or"sv,
    "order"sv,
    "pctfree"sv,
    "prior"sv,
    "privileges"sv,
    "public"sv,
    "raw"sv,
    "rename"sv,
    "resource"sv,
    "revoke"sv,
    "row"sv,
    "rowid"sv,
    "rownum"sv,
    "rows"sv,
    "select"sv,
    "session"sv,
    "set"sv,
    "share"sv,
    "size"sv,
    "smallint"sv,
    "start"sv,
    "successful"sv,
    "synonym"sv,
    "sysdate"sv,
    "systimestamp"sv,
    "table"sv,
    "then"sv,
    "to"sv,
    "trigger"sv,
    "uid"sv,
    "union"sv,
    "unique"sv,
    "update"sv,
    "user"sv,
    "validate"sv,
    "values"sv,
    "varchar"sv,
    "varchar2"sv,
    "view"sv,
    "whenever"sv,
    "where"sv,
    "with"sv,
};

constexpr std::array postgresqlTypes{
    TypeRow{smallInteger, "smallint", ""},
    TypeRow{integer, "integer", ""},
    TypeRow{bigInteger, "bigint", ""},
    TypeRow{number, "numeric", "numeric(%n,%s)"},
    TypeRow{real, "real", ""},
    TypeRow{doubleReal, "double precision", ""},
    TypeRow{boolean, "boolean", ""},
    TypeRow{text, "text", "varchar(%n)"},
    TypeRow{fixedText, "char(1)", "char(%n)"},
    TypeRow{date, "date", ""},
    TypeRow{time, "time", ""},
    TypeRow{timestamp, "timestamp", ""},
    TypeRow{binary, "bytea", ""},
};

/// The names of PostgreSQL's types give SQLite's columns the right affinity, except the one for bytes.
constexpr std::array sqliteTypes{
    TypeRow{smallInteger, "smallint", ""},
    TypeRow{integer, "integer", ""},
    TypeRow{bigInteger, "bigint", ""},
    TypeRow{number, "numeric", "numeric(%n,%s)"},
    TypeRow{real, "real", ""},
    TypeRow{doubleReal, "double precision", ""},
    TypeRow{boolean, "boolean", ""},
    TypeRow{text, "text", "varchar(%n)"},
    TypeRow{fixedText, "char(1)", "char(%n)"},
    TypeRow{date, "date", ""},
    TypeRow{time, "time", ""},
    TypeRow{timestamp, "timestamp", ""},
    TypeRow{binary, "blob", ""},
};

constexpr std::array oracleTypes{
    TypeRow{smallInteger, "NUMBER(5)", ""},
    TypeRow{integer, "NUMBER(10)", ""},
    TypeRow{bigInteger, "NUMBER(19)", ""},
    TypeRow{number, "NUMBER", "NUMBER(%n,%s)"},
    TypeRow{real, "BINARY_FLOAT", ""},
    TypeRow{doubleReal, "BINARY_DOUBLE", ""},
    TypeRow{boolean, "NUMBER(1)", ""},
    TypeRow{text, "VARCHAR2(4000)", "VARCHAR2(%n CHAR)", "VARCHAR2(255 CHAR)", 1'000, "CLOB"},
    TypeRow{fixedText, "CHAR(1 CHAR)", "CHAR(%n CHAR)", "", 500, "VARCHAR2(4000)"},
    TypeRow{date, "DATE", ""},
    TypeRow{time, "TIMESTAMP", ""},
    TypeRow{timestamp, "TIMESTAMP", ""},
    TypeRow{binary, "BLOB", "", "RAW(255)"},
};

bool isSmallWord(int character, bool isFirst) {
    return (character >= 'a' && character <= 'z') || character == '_' ||
           (!isFirst && character >= '0' && character <= '9');
}

bool isOracleWord(int character, bool isFirst) {
    return isSmallWord(character, isFirst) && !(isFirst && character == '_');
}

constexpr std::size_t anyLength = 128;

const std::array table{
    Dialect{.name = "postgresql",
            .system = "PostgreSQL",
            .types = postgresqlTypes,
            .rules = {anyLength, isSmallWord, true, postgresqlReserved, '"'},
            .start = "BEGIN;\nSET LOCAL client_encoding = 'UTF8';\nSET LOCAL standard_conforming_strings = on;\n",
            .end = "COMMIT;\n",
            .generated = "GENERATED BY DEFAULT AS IDENTITY",
            .generatedType = "",
            .keyInteger = "",
            .naturalInteger = "",
            .isTrue = "true",
            .isFalse = "false",
            .booleanCheck = "",
            .hasLaterReferences = true,
            .comments = Comments::asStatements,
            .longestText = 0,
            .isLineSensitive = false,
            .longestInList = 0},
    Dialect{.name = "sqlite",
            .system = "SQLite",
            .types = sqliteTypes,
            .rules = {anyLength, isSmallWord, true, sqliteReserved, '"'},
            .start = "BEGIN;\n",
            .end = "COMMIT;\n",
            .generated = "",
            .generatedType = "integer", // with this very name the only column of a primary key is generated
            .keyInteger = "integer",
            .naturalInteger = "int",
            .isTrue = "1",
            .isFalse = "0",
            .booleanCheck = "",
            .hasLaterReferences = false,
            .comments = Comments::inLines,
            .longestText = 0,
            .isLineSensitive = false,
            .longestInList = 0},
    Dialect{.name = "oracle",
            .system = "Oracle",
            .types = oracleTypes,
            .rules = {anyLength, isOracleWord, true, oracleReserved, '"'},
            .start = "SET DEFINE OFF\nWHENEVER SQLERROR EXIT FAILURE\n",
            .end = "",
            .generated = "GENERATED BY DEFAULT AS IDENTITY",
            .generatedType = "",
            .keyInteger = "",
            .naturalInteger = "",
            .isTrue = "1",
            .isFalse = "0",
            .booleanCheck = "0, 1",
            .hasLaterReferences = true,
            .comments = Comments::asStatements,
            .longestText = 4'000,
            .isLineSensitive = true,
            .longestInList = 1'000},
};

std::string filled(std::string_view pattern, const ColumnType& type) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] != '%') {
            text += pattern[at];
        } else {
            text += std::to_string(pattern[++at] == 'n' ? type.length : type.scale);
        }
    }
    return text;
}

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// The text with U+FFFD for NUL, invalid sequences and, when `arePrintable`, all that is not printable.
std::string cleaned(std::string_view text, bool arePrintable) {
    std::string clean;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = text::nextCharacter(text, at);
        const bool isKept = character > 0 && (!arePrintable || text::isPrintable(character));
        clean += isKept ? text.substr(start, at - start) : replacement;
    }
    return clean;
}

std::string quoted(std::string_view text) {
    std::string literal = "'";
    for (const char byte : text) {
        literal.append(byte == '\'' ? 2 : 1, byte);
    }
    return literal + "'";
}

constexpr std::size_t longestLine = 1'000; // bytes; SQL*Plus takes 2,499 characters

/// Whether SQL*Plus acts on a line that the word begins: it knows "/", ".", "@", "#", and commands for the shell.
bool mayBeginLine(std::string_view word) {
    const auto first = static_cast<unsigned char>(word.empty() ? ' ' : word[0]);
    const unsigned char small = first | 0x20;
    return word.size() > 1 && ((first >= '0' && first <= '9') || (small >= 'a' && small <= 'z') || first >= 0x80);
}

/// Whether a line may end with the word: ";" would end the statement, "-" continue the line.
bool mayEndLine(std::string_view word) {
    return !word.empty() && word.back() != ';' && word.back() != '-';
}

/// The words of the text on lines that the shell leaves alone, in at most so many bytes once quotes are doubled.
std::string folded(std::string_view text, std::size_t most) {
    std::string folded;
    std::size_t bytes = 0;
    std::size_t line = 0;
    std::string_view last;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = std::min(text.find_first_not_of(" \t\r\n", at), text.size());
        const std::size_t end = std::min(text.find_first_of(" \t\r\n", start), text.size());
        const std::string word = cleaned(text.substr(start, end - start), true);
        if (word.empty()) {
            break;
        }
        const bool hadLineEnd = text.substr(at, start - at).find_first_of("\r\n") != std::string_view::npos;
        at = end;
        const std::size_t size = word.size() + static_cast<std::size_t>(std::ranges::count(word, '\''));
        if (bytes + size + 5 > most || size > longestLine) {
            return folded + " …";
        }
        const bool isLong = line + size > longestLine;
        if (!folded.empty()) {
            const bool breaks = (hadLineEnd || isLong) && mayEndLine(last) && mayBeginLine(word);
            if (isLong && !breaks && line + size > 2 * longestLine) {
                return folded + " …";
            }
            folded += breaks ? '\n' : ' ';
            line = breaks ? 0 : line + 1;
            ++bytes;
        }
        folded += word;
        bytes += size;
        line += size;
        last = text.substr(start, end - start);
    }
    return folded;
}

} // namespace

std::span<const Dialect> dialects() {
    return table;
}

const Dialect& findDialect(std::string_view name) {
    return *std::ranges::find(table, name, &Dialect::name);
}

std::string typeText(const ColumnType& type, bool isKey, const Dialect& dialect) {
    if (!type.sql.empty()) {
        return type.sql;
    }
    const TypeRow& row = *std::ranges::find(dialect.types, type.family, &TypeRow::family);
    if (type.length == 0 || row.sized.empty()) {
        return std::string(isKey && !row.inKey.empty() ? row.inKey : row.plain);
    }
    if (row.longest == 0 || type.length <= row.longest) {
        return filled(row.sized, type);
    }
    return std::string(isKey && !row.inKey.empty() ? row.inKey : row.longer);
}

std::string literal(std::string_view text, const Dialect& dialect) {
    return quoted(dialect.isLineSensitive ? folded(text, dialect.longestText) : cleaned(text, false));
}

std::vector<std::string> commentLines(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        lines.push_back(cleaned(text.substr(at, end - at), true));
        at = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    return lines;
}

} // namespace exporter::sql
