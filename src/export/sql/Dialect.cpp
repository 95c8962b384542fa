#include "export/sql/Dialect.h"

#include "text/ascii.h"
#include "text/escape.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>

namespace exporter::sql {

namespace {

using enum Family;

constexpr std::size_t countWords(std::string_view words) {
    return static_cast<std::size_t>(std::ranges::count(words, ' ')) + 1;
}

/// The words of a text that has one blank between them.
template <std::size_t count>
constexpr std::array<std::string_view, count> split(std::string_view text) {
    std::array<std::string_view, count> words{};
    for (std::string_view& word : words) {
        word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
    return words;
}

/// Reserved, or reserved except as names of functions and types: pg_get_keywords() of version 15.
constexpr std::string_view postgresqlWords =
    "all analyse analyze and any array as asc asymmetric authorization binary both case cast check collate "
    "collation column concurrently constraint create cross current_catalog current_date current_role "
    "current_schema current_time current_timestamp current_user default deferrable desc distinct do else end "
    "except false fetch for foreign freeze from full grant group having ilike in initially inner intersect "
    "into is isnull join lateral leading left like limit localtime localtimestamp natural not notnull null "
    "offset on only or order outer overlaps placing primary references returning right select session_user "
    "similar some symmetric system_user table tablesample then to trailing true union unique user using "
    "variadic verbose when where window with";
constexpr auto postgresqlReserved = split<countWords(postgresqlWords)>(postgresqlWords);
static_assert(std::ranges::is_sorted(postgresqlReserved));

/// SQLite's keywords of version 3.40, all of them: which ones a name may be differs between its versions.
constexpr std::string_view sqliteWords =
    "abort action add after all alter always analyze and as asc attach autoincrement before begin between by "
    "cascade case cast check collate column commit conflict constraint create cross current current_date "
    "current_time current_timestamp database default deferrable deferred delete desc detach distinct do drop "
    "each else end escape except exclude exclusive exists explain fail filter first following for foreign "
    "from full generated glob group groups having if ignore immediate in index indexed initially inner insert "
    "instead intersect into is isnull join key last left like limit match materialized natural no not nothing "
    "notnull null nulls of offset on or order others outer over partition plan pragma preceding primary query "
    "raise range recursive references regexp reindex release rename replace restrict returning right rollback "
    "row rows savepoint select set table temp temporary then ties to transaction trigger unbounded union "
    "unique update using vacuum values view virtual when where window with without";
constexpr auto sqliteReserved = split<countWords(sqliteWords)>(sqliteWords);
static_assert(std::ranges::is_sorted(sqliteReserved));

/// The reserved words of Oracle's SQL, its pseudocolumns, and words that begin what is not a column in a table.
constexpr std::string_view oracleWords =
    "access add all alter and any as asc audit between by char check cluster column column_value comment "
    "compress connect constraint create current date decimal default delete desc distinct drop else exclusive "
    "exists file float for foreign from grant group having identified immediate in increment index initial "
    "insert integer intersect into is level like lock long maxextents minus mlslabel mode modify "
    "nested_table_id noaudit nocompress not nowait null number of offline on online option or order pctfree "
    "period primary prior privileges public raw ref references rename resource revoke row rowid rownum rows "
    "scope select session set share size smallint start successful supplemental synonym sysdate systimestamp "
    "table then to trigger uid union unique update user validate values varchar varchar2 view whenever where "
    "with";
constexpr auto oracleReserved = split<countWords(oracleWords)>(oracleWords);
static_assert(std::ranges::is_sorted(oracleReserved));

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
constexpr auto sqliteTypes = [] {
    auto types = postgresqlTypes;
    for (TypeRow& row : types) {
        row.plain = row.family == binary ? "blob" : row.plain;
    }
    return types;
}();

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
            .manyTables =
                "So many tables in one transaction need a greater max_locks_per_transaction than the default.",
            .comments = Comments::asStatements,
            .longestText = 0,
            .isLineSensitive = false,
            .longestInList = 0},
    Dialect{.name = "sqlite",
            .system = "SQLite",
            .types = sqliteTypes,
            .rules = {anyLength, isSmallWord, true, sqliteReserved, '"'},
            .start = "-- References are checked in connections with PRAGMA foreign_keys = ON.\nBEGIN;\n",
            .end = "COMMIT;\n",
            .generated = "",
            .generatedType = "integer", // with this very name the only column of a primary key is generated
            .keyInteger = "integer",
            .naturalInteger = "int",
            .isTrue = "1",
            .isFalse = "0",
            .booleanCheck = "",
            .hasLaterReferences = false,
            .manyTables = "",
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
            .manyTables = "",
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
    if (text::isPrintableAscii(text)) {
        return std::string(text);
    }
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
    std::string literal;
    literal.reserve(text.size() + 2);
    literal += '\'';
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\'', at), text.size());
        literal.append(text.substr(at, end - at)).append(end < text.size() ? "''" : "");
        at = end + 1;
    }
    return literal += '\'';
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
    return text::isPrintableAscii(text) ? quoted(text) : quoted(cleaned(text, dialect.isLineSensitive));
}

std::string commentLiteral(std::string_view text, const Dialect& dialect) {
    return dialect.isLineSensitive ? quoted(folded(text, dialect.longestText)) : literal(text, dialect);
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
