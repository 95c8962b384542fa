#include "export/sql/writeNameMap.h"

#include "export/ElementIds.h"
#include "export/words.h"
#include "host/model/KelClass.h"
#include "text/Output.h"

#include <array>

namespace exporter::sql {

namespace {

void putField(std::string_view text, text::BufferedOutput& output) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        output.put(text);
        return;
    }
    output.put('"');
    for (const char byte : text) {
        output.putRepeated(byte, byte == '"' ? 2 : 1);
    }
    output.put('"');
}

struct Row {
    const KelObject& element;
    std::string_view table;
    std::string_view column;
    Rule rule;
    const NameChange& change;
};

void putRow(const Row& row, const ElementIds& ids, text::BufferedOutput& output) {
    const std::string changes = changeText(row.change);
    const std::string why = std::string(ruleText(row.rule)) + (changes.empty() ? "" : "; " + changes);
    const std::array<std::string, 5> others{qualifiedName(row.element), kindWord(row.element.elementType),
                                            std::string(row.table), std::string(row.column), why};
    putField(ids.idOf(row.element), output);
    for (const std::string& field : others) {
        output.put(',');
        putField(field, output);
    }
    output.put('\n');
}

} // namespace

void writeNameMap(const Schema& schema, const ElementIds& ids, text::BufferedOutput& output) {
    output.put("element_id,qualified_name,kind,table,column,why\n");
    for (const Table& table : schema.tables) {
        if (table.classes.empty()) {
            putRow({*table.element, table.name.text, "", table.rule, table.name.change}, ids, output);
        }
        for (const KelClass* one : table.classes) {
            putRow({*one, table.name.text, "", table.rule, table.name.change}, ids, output);
        }
        for (const Column& column : table.columns) {
            putRow({*column.element, table.name.text, column.name.text, column.rule, column.name.change}, ids, output);
        }
    }
}

} // namespace exporter::sql
