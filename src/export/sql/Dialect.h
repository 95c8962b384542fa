#pragma once

#include "export/UniqueNames.h"
#include "export/sql/Schema.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace exporter::sql {

/// How a dialect writes the types of one family. "%n" is the length and "%s" the scale.
struct TypeRow {
    Family family;
    std::string_view plain;       ///< without a length
    std::string_view sized;       ///< with one; empty if that is the same
    std::string_view inKey = {};  ///< instead of `plain` in a key or an index; empty if that is the same
    std::uint32_t longest = 0;    ///< the greatest length that the system takes; 0: any that there is
    std::string_view longer = {}; ///< beyond it
};

/// Where descriptions are written.
enum class Comments : std::uint8_t { inLines, asStatements };

/// A dialect: what differs between the systems, as data.
struct Dialect {
    std::string_view name;
    std::string_view system; ///< for people
    std::span<const TypeRow> types;
    NameRules rules;                 ///< what needs quotes
    std::string_view start;          ///< statements before the first table
    std::string_view end;            ///< statements after all others
    std::string_view generated;      ///< behind the type of a generated column
    std::string_view generatedType;  ///< of such a column; empty: its type
    std::string_view keyInteger;     ///< a type with which the only column of a primary key would be generated
    std::string_view naturalInteger; ///< instead of it
    std::string_view isTrue;
    std::string_view isFalse;
    std::string_view booleanCheck; ///< the values of a CHECK of a boolean column; empty for none
    bool hasLaterReferences;       ///< FOREIGN KEYs are added when all tables are there; otherwise within the tables
    std::string_view manyTables;   ///< what to tell of a script with thousands of tables; empty for nothing
    Comments comments;
    std::size_t longestText;   ///< bytes of a comment; 0: any number
    bool isLineSensitive;      ///< the system's shell acts on some lines even within a text
    std::size_t longestInList; ///< values of a CHECK in one list; 0: any number
};

[[nodiscard]] std::span<const Dialect> dialects();
[[nodiscard]] const Dialect& findDialect(std::string_view name);

/// The type as the dialect writes it. `isKey` as in `Column`.
[[nodiscard]] std::string typeText(const ColumnType& type, bool isKey, const Dialect& dialect);

/// `text`, valid UTF-8 or not, as a literal in its quotes. NUL and invalid sequences become U+FFFD; in a line-sensitive
/// dialect all that is not printable does.
[[nodiscard]] std::string literal(std::string_view text, const Dialect& dialect);

/// The same for a comment. In a line-sensitive dialect blanks and line ends between words are as its shell needs them,
/// and the text ends with "…" where it would be too long.
[[nodiscard]] std::string commentLiteral(std::string_view text, const Dialect& dialect);

/// The lines of a comment, without "--": in each, U+FFFD for what is not printable.
[[nodiscard]] std::vector<std::string> commentLines(std::string_view text);

} // namespace exporter::sql
