#include "export/sql/SchemaScript.h"

#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/options.h"
#include "export/sql/Dialect.h"
#include "export/sql/Plan.h"
#include "host/model/KelClass.h"
#include "host/model/KelModel.h"
#include "host/model/KelModelObject.h"
#include "host/model/KelNote.h"
#include "text/Output.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>

namespace exporter::sql {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view indent = "    ";
constexpr std::size_t manyTables = 1'500; // PostgreSQL's default takes some 2,000 tables with few indexes
constexpr std::array toldOptions{"dialect"sv, "tables"sv, "inheritance"sv, "key"sv, "names"sv, "name-limit"sv};

class Script {
public:
    Script(const Schema& schema, const Dialect& dialect, text::BufferedOutput& output)
        : schema_(schema), dialect_(dialect), quoting_(dialect.rules), output_(output) {}

    void writeHead(const ScriptHead& head);
    void writeTable(const Table& table);
    void writeIndexes(const Table& table);
    void writeReferences(const Table& table);
    void writeComments(const Table& table);

private:
    template <class... Texts>
    void put(const Texts&... texts) {
        (output_.put(std::string_view(texts)), ...);
    }
    /// The name, in quotes where it needs them.
    void putName(std::string_view text) {
        if (quoting_.needsQuotes(text)) {
            put(quotedName(text, dialect_.rules));
        } else {
            put(text);
        }
    }
    void putNames(const Table& table, const Columns& columns);
    void putKey(std::string_view name, std::string_view what, const Table& table, const Columns& columns);
    void putComment(std::string_view text, std::string_view before);
    void putColumn(const Table& table, std::uint32_t index);
    void putReference(const Reference& reference);
    [[nodiscard]] std::string name(std::string_view text) const {
        return quoting_.needsQuotes(text) ? quotedName(text, dialect_.rules) : std::string(text);
    }
    [[nodiscard]] std::string valueOf(const Column& column) const;
    [[nodiscard]] std::string typeOf(const Table& table, std::uint32_t index) const;
    [[nodiscard]] std::string checkOf(const Column& column) const;

    const Schema& schema_;
    const Dialect& dialect_;
    Quoting quoting_;
    text::BufferedOutput& output_;
};

void Script::putComment(std::string_view text, std::string_view before) {
    for (const std::string& line : commentLines(text)) {
        put(before);
        put(line.empty() ? "--" : "-- ");
        put(line);
        put("\n");
    }
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

void Script::writeHead(const ScriptHead& head) {
    std::size_t columns = 0;
    std::size_t references = 0;
    for (const Table& table : schema_.tables) {
        columns += table.columns.size();
        references += table.references.size();
    }
    putComment("The tables of the model \"" + text::repairedUtf8(head.model.getName().view()) + "\" for " +
                   std::string(dialect_.system) + ": " + counted(schema_.tables.size(), "table", "tables") + ", " +
                   counted(columns, "column", "columns") + ", " + counted(references, "foreign key", "foreign keys"),
               "");
    std::string options = "Options:";
    for (const std::string_view option : toldOptions) {
        options.append(" ").append(option).append("=").append(head.options.get(option));
    }
    putComment(options, "");
    if (schema_.tables.size() > manyTables) {
        putComment(dialect_.manyTables, "");
    }
    if (!head.omissions.isEmpty()) {
        putComment("\nLeft out", "");
        for (const Omissions::Count& row : head.omissions.getCounts()) {
            putComment("  " + counted(row.count, row.omission.one, row.omission.many) + ": " +
                           std::string(row.omission.why),
                       "");
        }
    }
    const Topic* last = nullptr;
    for (const Decision& decision : schema_.decisions) {
        if (last == nullptr || *last != decision.topic) {
            putComment("\n" + std::string(topicText(decision.topic)), "");
        }
        last = &decision.topic;
        std::string text = decision.text;
        std::ranges::replace_if(
            text, [](char byte) { return byte == '\n' || byte == '\r'; }, ' ');
        putComment("  " + text, "");
    }
    put("\n");
    put(dialect_.start);
}

void Script::putNames(const Table& table, const Columns& columns) {
    put("(");
    for (std::size_t index = 0; index < columns.size(); ++index) {
        put(index == 0 ? "" : ", ");
        putName(table.columns[columns[index]].name.text);
    }
    put(")");
}

std::string Script::valueOf(const Column& column) const {
    switch (column.byDefault.kind) {
    case Default::Kind::boolean:
        return std::string(column.byDefault.value == "true" ? dialect_.isTrue : dialect_.isFalse);
    case Default::Kind::text:
        return literal(column.byDefault.value, dialect_);
    default:
        return column.byDefault.value;
    }
}

std::string Script::typeOf(const Table& table, std::uint32_t index) const {
    const Column& column = table.columns[index];
    if (column.isGenerated && !dialect_.generatedType.empty()) {
        return std::string(dialect_.generatedType);
    }
    std::string type = typeText(column.type, column.isKey, dialect_);
    const bool isWholeKey =
        table.primary && table.primary->columns.size() == 1 && table.primary->columns.front() == index;
    if (isWholeKey && !dialect_.keyInteger.empty() && type == dialect_.keyInteger) {
        type = dialect_.naturalInteger;
    }
    return type;
}

/// The condition of a CHECK; empty for none.
std::string Script::checkOf(const Column& column) const {
    if (column.values == nullptr) {
        const bool isChecked = column.type.family == Family::boolean && column.type.sql.empty();
        return dialect_.booleanCheck.empty() || !isChecked
                   ? ""
                   : name(column.name.text) + " IN (" + std::string(dialect_.booleanCheck) + ")";
    }
    const std::string columnName = name(column.name.text);
    const std::size_t most = dialect_.longestInList == 0 ? column.values->size() : dialect_.longestInList;
    std::string check;
    for (std::size_t at = 0; at < column.values->size(); ++at) {
        if (at % most == 0) {
            check += (at == 0 ? "" : ") OR ") + columnName + " IN (";
        } else {
            check += ", ";
        }
        check += literal((*column.values)[at], dialect_);
    }
    return check + ")";
}

void Script::putColumn(const Table& table, std::uint32_t index) {
    const Column& column = table.columns[index];
    if (dialect_.comments == Comments::inLines) {
        putComment(commentOn(column), indent);
    }
    put(indent);
    putName(column.name.text);
    put(" ", typeOf(table, index));
    if (column.byDefault.kind != Default::Kind::none) {
        put(" DEFAULT ", valueOf(column));
    }
    if (column.isGenerated && !dialect_.generated.empty()) {
        put(" ", dialect_.generated);
    }
    put(column.isNotNull ? " NOT NULL" : "");
    const std::string check = checkOf(column);
    if (!check.empty()) {
        put(column.check.empty() ? "" : " CONSTRAINT " + name(column.check));
        put(" CHECK (", check, ")");
    }
}

void Script::putReference(const Reference& reference) {
    const Table& target = schema_.tables[reference.table];
    put(" REFERENCES ");
    putName(target.name.text);
    put(" ");
    putNames(target, reference.keyColumns);
    put(reference.cascades ? " ON DELETE CASCADE" : "");
    put(" DEFERRABLE INITIALLY DEFERRED");
}

/// A constraint of a table: its name, what it is, and the columns.
void Script::putKey(std::string_view name, std::string_view what, const Table& table, const Columns& columns) {
    put("CONSTRAINT ");
    putName(name);
    put(" ", what, " ");
    putNames(table, columns);
}

void Script::writeTable(const Table& table) {
    put("\nCREATE TABLE ");
    putName(table.name.text);
    put(" (\n");
    if (dialect_.comments == Comments::inLines) {
        putComment(commentOn(table), indent);
    }
    for (std::uint32_t index = 0; index < table.columns.size(); ++index) {
        put(index == 0 ? "" : ",\n");
        putColumn(table, index);
    }
    if (table.primary) {
        put(",\n", indent);
        putKey(table.primary->name, "PRIMARY KEY", table, table.primary->columns);
    }
    for (const Key& key : table.uniques) {
        put(",\n", indent);
        putKey(key.name, "UNIQUE", table, key.columns);
    }
    if (!dialect_.hasLaterReferences) {
        for (const Reference& reference : table.references) {
            put(",\n", indent);
            putKey(reference.name, "FOREIGN KEY", table, reference.columns);
            putReference(reference);
        }
    }
    put("\n);\n");
}

void Script::writeIndexes(const Table& table) {
    for (const Index& index : table.indexes) {
        put("CREATE INDEX ");
        putName(index.name);
        put(" ON ");
        putName(table.name.text);
        put(" ");
        putNames(table, index.columns);
        put(";\n");
    }
}

void Script::writeReferences(const Table& table) {
    for (const Reference& reference : table.references) {
        put("ALTER TABLE ");
        putName(table.name.text);
        put(" ADD ");
        putKey(reference.name, "FOREIGN KEY", table, reference.columns);
        putReference(reference);
        put(";\n");
    }
}

void Script::writeComments(const Table& table) {
    const std::string tableName = name(table.name.text);
    put("COMMENT ON TABLE ", tableName, " IS ", commentLiteral(commentOn(table), dialect_), ";\n");
    for (const Column& column : table.columns) {
        const std::string comment = commentOn(column);
        if (!comment.empty()) {
            put("COMMENT ON COLUMN ", tableName, ".");
            putName(column.name.text);
            put(" IS ", commentLiteral(comment, dialect_), ";\n");
        }
    }
}

constexpr std::string_view blanks = " \t\r\n";

/// Appends a paragraph.
void append(std::string& text, std::string_view paragraph) {
    const std::size_t end = paragraph.find_last_not_of(blanks) + 1;
    if (end > 0) {
        text.append(text.empty() ? "" : "\n").append(paragraph.substr(0, end));
    }
}

/// Descriptions, notes and the qualified name.
std::string described(const KelObject& element) {
    const auto& object = static_cast<const KelModelObject&>(element);
    std::string text;
    append(text, object.description.view());
    for (const KelNote* note : object.notes()) {
        append(text, note->description.view());
    }
    const std::size_t before = text.size();
    text += text.empty() ? "" : "\n";
    const std::size_t start = text.size();
    appendShownName(element, text);
    const std::size_t end = text.find_last_not_of(blanks) + 1;
    text.resize(end > start ? end : before);
    return text;
}

} // namespace

std::string commentOn(const Table& table) {
    if (table.classes.empty()) {
        return described(*table.element);
    }
    std::string text;
    for (const KelClass* one : table.classes) {
        append(text, described(*one));
    }
    return text;
}

std::string commentOn(const Column& column) {
    const bool isMade =
        column.rule == Rule::madeKey || column.rule == Rule::inheritedKey || column.rule == Rule::kindColumn;
    return isMade ? std::string() : described(*column.element);
}

void writeScript(const Schema& schema, const Dialect& dialect, const ScriptHead& head, text::BufferedOutput& output) {
    Script script(schema, dialect, output);
    script.writeHead(head);
    for (const Table& table : schema.tables) {
        script.writeTable(table);
        script.writeIndexes(table);
    }
    if (dialect.hasLaterReferences) {
        output.put("\n");
        for (const Table& table : schema.tables) {
            script.writeReferences(table);
        }
    }
    if (dialect.comments == Comments::asStatements) {
        output.put("\n");
        for (const Table& table : schema.tables) {
            script.writeComments(table);
        }
    }
    output.put(dialect.end);
}

} // namespace exporter::sql
