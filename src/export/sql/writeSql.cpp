#include "export/sql/writeSql.h"

#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/sql/Dialect.h"
#include "export/sql/SchemaScript.h"
#include "export/sql/makeSchema.h"
#include "export/sql/omissions.h"
#include "export/sql/writeNameMap.h"

#include <optional>

namespace exporter {

namespace {

constexpr std::uint64_t shortestLimit = 30; // of Oracle before 12.2
constexpr std::uint64_t longestLimit = 63;  // of PostgreSQL

sql::SchemaChoices choicesOf(const OptionValues& options) {
    const std::string& types = options.get("type-map");
    return {.tables = options.get("tables"),
            .inheritance = options.get("inheritance"),
            .key = options.get("key"),
            .names = {.isSnake = options.get("names") == "snake", .longest = options.number("name-limit")},
            .types = types.empty() ? sql::TypeMap() : sql::TypeMap(types),
            .kinds = ClassKinds(options.family(ClassKinds::option.name))};
}

} // namespace

void checkSqlOptions(const OptionValues& options) {
    const std::uint64_t limit = options.number("name-limit");
    if (limit < shortestLimit || limit > longestLimit) {
        throw WrongOption("name-limit is a number from 30 to 63");
    }
    static_cast<void>(choicesOf(options));
}

void writeSql(const ExportContext& context) {
    const OptionValues& options = context.options;
    const sql::Dialect& dialect = sql::findDialect(options.get("dialect"));
    std::optional<ElementIds> ids;
    const sql::FindIds findIds = [&]() -> const ElementIds& {
        return ids ? *ids
                   : ids.emplace(context.model, context.getSource(), ElementIds::Of::all, ElementIds::Find::byNumber);
    };
    sql::addOmissions(context.model, context.omissions);
    const sql::Schema schema = sql::makeSchema(context.model, choicesOf(options), findIds, context.omissions);
    const bool hasMap = !options.get("map").empty();
    if (hasMap) {
        static_cast<void>(findIds()); // nothing is written unless they are found
    }
    text::BufferedOutput script(context.folder.open(""));
    sql::writeScript(schema, dialect, {context.model, options, context.omissions}, script);
    script.flush();
    if (hasMap) {
        text::BufferedOutput csv(context.folder.openBeside());
        sql::writeNameMap(schema, *ids, csv);
        csv.flush();
    }
}

} // namespace exporter
