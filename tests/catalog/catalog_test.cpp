// Catalogues of many models: their rows, how they follow changes of the files, and what may go wrong.

#include "Catalogue.h"
#include "petal/Shell.h"
#include "support/HostileTexts.h"
#include "support/RandomModelFile.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

using catalog::ColumnKind;

const std::string header = "(object Petal\n    version 42\n    charSet 0)\n";

std::string logicalView(const std::string& content) {
    return header +
           "(object Design \"Logical View\"\n    root_category (object Class_Category \"Logical View\"\n"
           "    logical_models (list unit_reference_list " +
           content + ")))\n";
}

std::string classNamed(const std::string& name, const std::string& rest = "") {
    return "(object Class \"" + name + "\" " + rest + ")\n";
}

class Catalog : public Shell {
protected:
    Catalog() { std::filesystem::create_directory(pathOf("models")); }

    void putExamples() const {
        for (const auto& entry : std::filesystem::directory_iterator(PETAL_EXAMPLES)) {
            if (entry.path().extension() == ".mdl") {
                std::filesystem::copy_file(entry.path(), pathOf("models") / entry.path().filename());
            }
        }
    }
    void putRandom(int count) const {
        for (int seed = 0; seed < count; ++seed) {
            put("models/r" + std::to_string(seed % 3) + "/m" + std::to_string(seed) + ".mdl",
                header + RandomModelFile(static_cast<unsigned int>(seed), RandomModelFile::Kind::wild).getBody());
        }
    }
    /// Expects the catalogue to have the rows of one that is made now.
    void expectAsFresh(const std::string& file, const std::string& options = "") const {
        const Ended ended = run("rm -f fresh.db; $petal catalog models -q -o fresh.db " + options);
        const Catalogue now(pathOf(file));
        EXPECT_EQ(now.faults(), "");
        const std::multiset<std::string> rows = now.content();
        const std::multiset<std::string> fresh = Catalogue(pathOf("fresh.db")).content();
        std::vector<std::string> differences;
        std::ranges::set_symmetric_difference(rows, fresh, std::back_inserter(differences));
        EXPECT_EQ(differences, std::vector<std::string>()) << ended.errors;
    }
    void expectCatalogue(int status = 0, const std::string& options = "") const {
        const Ended ended = run("$petal catalog models -o a.db " + options);
        EXPECT_EQ(ended.status, status) << ended.errors;
        expectAsFresh("a.db", options);
    }
    [[nodiscard]] std::filesystem::path pathOf(std::string_view name) const { return Shell::pathOf(name); }
};

TEST_F(Catalog, TheFileIsAsItsDescriptionSays) {
    putExamples();
    ASSERT_EQ(run("$petal catalog models -o a.db").status, 0);
    const Catalogue file(pathOf("a.db"));
    const auto isExplained = [&](std::string_view thing, const std::string& column) {
        return file.count("SELECT count(*) FROM about WHERE name = '" + std::string(thing) + "' AND \"column\" " +
                          column + " AND text <> ''") == 1;
    };
    std::set<std::string> known{"about", "guide"};
    for (const catalog::Table& table : catalog::tables()) {
        SCOPED_TRACE(table.name);
        known.emplace(table.name);
        std::vector<std::string> expected;
        std::set<std::string> references;
        for (const catalog::Column& column : table.columns) {
            const bool isText = column.kind == ColumnKind::text;
            expected.push_back(std::string(column.name) + (isText ? " TEXT" : " INTEGER") +
                               (&column == table.columns.data() ? " key" : ""));
            if (column.kind == ColumnKind::reference) {
                references.insert(std::string(column.name) + " " + std::string(tableOf(column.target).name));
            }
            EXPECT_TRUE(isExplained(table.name, "= '" + std::string(column.name) + "'")) << column.name;
        }
        EXPECT_TRUE(isExplained(table.name, "IS NULL"));
        std::vector<std::string> columns;
        const std::string argument = "('" + std::string(table.name) + "')";
        for (const Catalogue::Cells& row : file.ask("SELECT name, type, pk FROM pragma_table_info" + argument)) {
            columns.push_back(row[0] + " " + row[1] + (row[2] == "1" ? " key" : ""));
        }
        EXPECT_EQ(columns, expected);
        std::set<std::string> found;
        for (const Catalogue::Cells& row :
             file.ask("SELECT \"from\", \"table\" FROM pragma_foreign_key_list" + argument)) {
            found.insert(row[0] + " " + row[1]);
            EXPECT_TRUE(row[0] == "id" || file.count("SELECT count(*) FROM pragma_index_list" + argument +
                                                     " AS list, pragma_index_info(list.name) AS info WHERE "
                                                     "info.seqno = 0 AND info.name = '" +
                                                     row[0] + "'") > 0)
                << row[0] << " has no index";
        }
        EXPECT_EQ(found, references);
    }
    for (const Catalogue::Cells& row : file.ask(
             "SELECT name FROM sqlite_schema WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite%' AND name NOT "
             "LIKE 'search_%'")) {
        EXPECT_TRUE(isExplained(row[0], "IS NULL")) << row[0];
    }
    for (const Catalogue::Cells& row :
         file.ask("SELECT thing.name, info.name FROM sqlite_schema AS thing, pragma_table_info(thing.name) AS info "
                  "WHERE thing.type = 'view' AND thing.name <> 'estate_totals'")) {
        EXPECT_TRUE(isExplained(row[0], "= '" + row[1] + "'")) << row[0] << "." << row[1];
    }
    EXPECT_EQ(file.faults(), "");
}

/// The elements of a JSON document by kind, name and owner's name.
void collect(const rapidjson::Value& value, const std::string& member, const std::string& owner,
             std::multiset<std::string>& into) {
    static const std::map<std::string, std::string> kinds{
        {"types", "type"},           {"packages", "package"},     {"diagrams", "diagram"}, {"arguments", "argument"},
        {"attributes", "attribute"}, {"operations", "operation"}, {"keys", "key"},         {"roles", "role"}};
    for (const auto& child : value.GetObject()) {
        if (!child.value.IsArray()) {
            continue;
        }
        const std::string name = child.name.GetString();
        for (const auto& one : child.value.GetArray()) {
            if (one.IsObject() && one.HasMember("id")) {
                const std::string kind = name == "elements" ? one["kind"].GetString() : kinds.at(name);
                into.insert(kind + "|" + one["name"].GetString() + "|" + owner);
                collect(one, name, one["name"].GetString(), into);
            } else if (name == "notes") {
                into.insert(std::string("note|") + one.GetString() + "|" + value["name"].GetString());
            } else if (name == "attributes" || (name == "elements" && one.IsInt())) {
                into.insert(member + " member|" + value["name"].GetString());
            }
        }
    }
}

TEST_F(Catalog, HasWhatTheDocumentsHave) {
    putExamples();
    putRandom(20);
    std::string content;
    std::set<std::string> texts(hostileTexts.begin(), hostileTexts.end());
    texts.insert(longHostileText());
    int number = 0;
    for (std::string text : texts) {
        for (std::size_t at = 0; (at = text.find_first_of("\"\\", at)) != std::string::npos; at += 2) {
            text.insert(at, "\\");
        }
        content += classNamed(text + std::to_string(++number), "documentation \"" + text + "\"");
    }
    put("models/hostile.mdl", logicalView(content));
    ASSERT_EQ(run("$petal catalog models -o a.db").status, 0);
    const Catalogue file(pathOf("a.db"));
    for (const Catalogue::Cells& model : file.ask("SELECT id, path FROM model")) {
        const Ended document = run("$petal import 'models/" + model[1] + "' -q -f json --log-level FATAL");
        rapidjson::Document json;
        json.Parse(document.output.c_str());
        ASSERT_FALSE(json.HasParseError()) << document.errors;
        std::multiset<std::string> expected;
        collect(json["model"], "", "~", expected);
        std::multiset<std::string> rows;
        const std::string ofModel = " WHERE element.model = " + model[0];
        for (const char* sql :
             {"SELECT element.kind, element.name, owner.name FROM element LEFT JOIN element AS owner ON owner.id = "
              "element.owner",
              "SELECT 'note', coalesce(text, ''), element.name FROM note JOIN element ON element.id = note.element",
              "SELECT 'keys member', element.name FROM key_attribute JOIN element ON element.id = key",
              "SELECT 'diagrams member', element.name FROM diagram_element JOIN element ON element.id = diagram"}) {
            for (const Catalogue::Cells& row : file.ask(sql + ofModel)) {
                rows.insert(row[0] + "|" + row[1] + (row.size() > 2 ? "|" + row[2] : ""));
            }
        }
        EXPECT_EQ(rows, expected) << model[1];
    }
    EXPECT_EQ(
        file.count(
            "SELECT count(*) FROM element WHERE kind NOT IN ('package', 'generalization') AND NOT EXISTS (SELECT 1 "
            "FROM (SELECT id FROM type UNION ALL SELECT id FROM class UNION ALL SELECT id FROM attribute UNION "
            "ALL SELECT id FROM operation UNION ALL SELECT id FROM argument UNION ALL SELECT id FROM "
            "association UNION ALL SELECT id FROM role UNION ALL SELECT id FROM realization UNION ALL SELECT "
            "id FROM dependency UNION ALL SELECT id FROM key UNION ALL SELECT id FROM diagram) AS part WHERE "
            "part.id = element.id)"),
        0);
    EXPECT_EQ(file.faults(), "");
}

TEST_F(Catalog, AnswersWithViewsSearchAndGuide) {
    putExamples();
    const std::string up = "superclasses (list inheritance_relationship_list (object Inheritance_Relationship supplier "
                           "\"Logical View::";
    put("models/circle.mdl",
        logicalView(classNamed("CustomerOrderLine", "documentation \"Its zebraCrossing\"\n" + up + "B\"))") +
                    classNamed("B", up + "C\"))") + classNamed("C", up + "B\"))") +
                    classNamed("D", "class_attributes (list class_attribute_list (object ClassAttribute \"x\" type "
                                    "\"Wibble\") (object ClassAttribute \"y\" type \"B\"))")));
    put("models/chinese.mdl", "(object Petal\n    version 42\n    charSet 134)\n" +
                                  logicalView(classNamed("\xBF\xCD\xBB\xA7\xB6\xA9\xB5\xA5")).substr(header.size()));
    put("models/broken.mdl", "no model\n");
    ASSERT_EQ(run("$petal catalog models -o a.db").status, 5);
    const Catalogue file(pathOf("a.db"));
    for (const char* word : {"order", "CustomerOrderLine", "ord*", "crossing", "客户", "订单", "户订单"}) {
        EXPECT_GT(file.count(std::string("SELECT count(*) FROM search WHERE search MATCH '") + word + "'"), 0) << word;
    }
    EXPECT_EQ(file.ask("SELECT class_name || ' ' || ancestor_name || ' ' || distance FROM inheritance JOIN element ON "
                       "element.id = "
                       "inheritance.class JOIN model ON model.id = model WHERE path = 'circle.mdl' ORDER BY 1"),
              (std::vector<Catalogue::Cells>{
                  {"B B 2"}, {"B C 1"}, {"C B 1"}, {"C C 2"}, {"CustomerOrderLine B 1"}, {"CustomerOrderLine C 2"}}));
    EXPECT_EQ(file.one("SELECT users FROM unresolved_types WHERE name = 'Wibble'"), "1");
    EXPECT_EQ(file.one("SELECT count(*) FROM unresolved_types WHERE name = 'B'"), "0");
    EXPECT_EQ(
        file.ask("SELECT class_name, used_name FROM class_references WHERE \"by\" = 'attribute' AND used_name = 'B'"),
        (std::vector<Catalogue::Cells>{{"D", "B"}}));
    const std::set<std::string> mayBeEmpty{
        "copied-models", "missing-units", "duplicate-classes", "differing-attributes", "enumerations",
        "units",         "damages"};
    for (const Catalogue::Cells& question : file.ask("SELECT name, sql FROM guide")) {
        const std::vector<Catalogue::Cells> rows = file.ask(question[1]);
        EXPECT_TRUE(!rows.empty() || mayBeEmpty.contains(question[0])) << question[0];
        const Ended csv = run("$petal catalog --ask " + question[0] + " a.db --csv");
        EXPECT_EQ(csv.status, 0) << csv.errors;
        const Ended json = run("$petal catalog --ask " + question[0] + " a.db --json");
        rapidjson::Document list;
        list.Parse(json.output.c_str());
        ASSERT_TRUE(list.IsArray()) << question[0] << json.errors;
        EXPECT_EQ(list.GetArray().Size(), rows.size()) << question[0];
    }
    EXPECT_EQ(run("$petal catalog --ask failed-models a.db").output,
              "path        failure\n----------  ------------------------------------------\n"
              "broken.mdl  [QEV_RRSE_F0002] Invalid input file format\n");
    EXPECT_TRUE(has(run("$petal catalog --ask guide a.db").output, "largest-classes"));
    expectRefusals("$petal catalog ", {{"--ask nothing a.db", 2, "the guide has no question 'nothing'"},
                                       {"--ask models missing.db", 1, "'missing.db' does not exist"},
                                       {"--ask models models/circle.mdl", 1, "is not a catalogue"}});
}

TEST_F(Catalog, AnswersWhatOtherCommandsPrint) {
    put("models/part.cat", header + "(object Class_Category \"part\" logical_models (list unit_reference_list " +
                               classNamed("Inner", "oops )") + "))\n");
    put("models/m.mdl",
        "(object Petal\n    version 47\n    _written \"Some 1.0\"\n    charSet 0)\n" +
            logicalView("(object Class_Category \"part\" is_unit TRUE is_loaded FALSE file_name \"part.cat\")\n"
                        "(object Class_Category \"lost\" is_unit TRUE is_loaded FALSE file_name \"lost.cat\")\n"
                        "(object ClassDiagram \"Main\")(object UseCaseDiagram \"Uses\") ] " +
                        classNamed("Outer"))
                .substr(header.size()));
    ASSERT_EQ(run("$petal catalog models -o a.db; $petal import models/m.mdl -q -f none --ledger m.ledger").status, 0);
    const auto listed = [&](const std::string& command) {
        rapidjson::Document list;
        list.Parse(run(command).output.c_str());
        EXPECT_TRUE(list.IsArray()) << command;
        return list;
    };
    const auto answer = [&](const std::string& name) {
        return listed("$petal catalog --json --ask " + name + " a.db");
    };
    const rapidjson::Document files = listed("$petal info --json models/m.mdl models/part.cat");
    const rapidjson::Document info = answer("info");
    ASSERT_EQ(info.Size(), 1U);
    EXPECT_STREQ(info[0]["version"].GetString(), "47");
    EXPECT_STREQ(info[0]["written_by"].GetString(), files[0]["written"].GetString());
    EXPECT_EQ(info[0]["objects"].GetInt(), files[0]["objects"].GetInt() + files[1]["objects"].GetInt());
    EXPECT_EQ(info[0]["diagrams"].GetInt(), static_cast<int>(files[0]["diagrams"].Size()));
    EXPECT_EQ(answer("diagrams").Size(), files[0]["diagrams"].Size());
    EXPECT_EQ(answer("objects").Size(),
              files[0]["objectsByKind"].MemberCount() + files[1]["objectsByKind"].MemberCount());

    std::multiset<std::string> damages;
    for (const rapidjson::Value& file : files.GetArray()) {
        for (const rapidjson::Value& damage : file["firstDamages"].GetArray()) {
            damages.insert(std::to_string(damage["line"].GetInt()) + ":" + std::to_string(damage["column"].GetInt()) +
                           " " + damage["kind"].GetString() + ": " + damage["text"].GetString());
        }
    }
    EXPECT_GE(damages.size(), 2U);
    std::multiset<std::string> told;
    for (const Catalogue::Cells& row :
         Catalogue(pathOf("a.db")).ask("SELECT line || ':' || \"column\" || ' ' || name || ': ' || text FROM damage")) {
        told.insert(row.front());
    }
    EXPECT_EQ(told, damages);
    EXPECT_EQ(answer("damages").Size(), damages.size());

    const rapidjson::Document units = answer("units");
    ASSERT_EQ(units.Size(), 2U);
    EXPECT_EQ(units[0]["found"].GetInt() + units[1]["found"].GetInt(), 1);
    const rapidjson::Document report = answer("report");
    EXPECT_EQ(report[0]["units_missing"].GetInt(), 1);
    EXPECT_EQ(report[0]["damages"].GetInt(), static_cast<int>(damages.size()));
    EXPECT_EQ(std::to_string(answer("ledger").Size()) + "\n", run("grep -c '\"loss\":true' m.ledger").output);
}

TEST_F(Catalog, FollowsTheFiles) {
    putExamples();
    const std::string unit = header + "(object Class_Category \"part\" logical_models (list unit_reference_list " +
                             classNamed("Inner") + "))\n";
    put("models/whole/whole.mdl",
        logicalView("(object Class_Category \"part\" is_unit TRUE is_loaded FALSE file_name \"part.cat\")\n" +
                    classNamed("Outer")));
    put("models/whole/part.cat", unit);
    put("models/small.mdl", logicalView(classNamed("First") + classNamed("Second")));
    expectCatalogue();
    const std::string bytes = get("a.db");
    EXPECT_TRUE(has(run("$petal catalog models -o a.db").errors, "5 models: 0 read, 5 unchanged, 0 failed"));
    EXPECT_TRUE(get("a.db") == bytes) << "nothing has changed";

    const auto idOf = [&](const std::string& name) {
        return Catalogue(pathOf("a.db")).one("SELECT id FROM element WHERE kind = 'class' AND name = '" + name + "'");
    };
    const std::map<std::string, std::string> before{
        {"First", idOf("First")}, {"Second", idOf("Second")}, {"Outer", idOf("Outer")}};
    static_cast<void>(run("touch -d '2001-02-03 04:05:06.789' models/small.mdl"));
    EXPECT_TRUE(has(run("$petal catalog models -o a.db").errors, " 0 read, 5 unchanged"));
    expectCatalogue();
    put("models/small.mdl", logicalView(classNamed("Zero") + classNamed("First") + classNamed("Second")));
    expectCatalogue();
    for (const auto& [name, id] : before) {
        EXPECT_EQ(idOf(name), id) << name;
    }
    put("models/whole/part.cat", header + "(object Class_Category \"part\" logical_models (list unit_reference_list " +
                                     classNamed("Other") + "))\n");
    expectCatalogue();
    std::filesystem::rename(pathOf("models/whole/part.cat"), pathOf("part.gone"));
    expectCatalogue();
    std::filesystem::rename(pathOf("part.gone"), pathOf("models/whole/part.cat"));
    expectCatalogue();
    std::filesystem::remove(pathOf("models/bookshop.mdl"));
    put("models/added/small.mdl", logicalView(classNamed("First")));
    expectCatalogue();
    const std::string good = get("models/small.mdl");
    put("models/small.mdl", "no model\n");
    expectCatalogue(5);
    EXPECT_TRUE(has(run("$petal catalog models -o a.db").errors, "1 failed"));
    put("models/small.mdl", good);
    expectCatalogue();
    expectCatalogue(0, "--source all");
    expectCatalogue(0, "--source none --types oracle");
    EXPECT_EQ(Catalogue(pathOf("a.db")).one("SELECT count(*) FROM source_object"), "0");
    EXPECT_EQ(files().count("a.db-wal") + files().count("a.db-journal") + files().count("a.db-shm"), 0U);
}

TEST_F(Catalog, IsTheSameAtAnyNumberOfProcesses) {
    putRandom(40);
    put("models/r0/broken.mdl", "no model\n");
    EXPECT_EQ(run("$petal catalog models -q -o one.db").status, 5);
    EXPECT_EQ(run("$petal catalog models -q -o four.db -j 4").status, 5);
    EXPECT_TRUE(get("one.db") == get("four.db"));
    // Folders whose models have one path, and a file that is named alone.
    EXPECT_EQ(
        run("mkdir other; cp -r models/r0 other; $petal catalog models/r0 other/r0 models/r1/m1.mdl -q -o some.db")
            .status,
        5);
    const Catalogue some(pathOf("some.db"));
    EXPECT_EQ(some.one("SELECT count(*) FROM model WHERE path LIKE 'r0/%'"),
              some.one("SELECT count(*) FROM model WHERE path NOT LIKE 'r0/%' AND path <> 'm1.mdl'"));
    EXPECT_EQ(some.one("SELECT count(*) FROM model WHERE path = 'm1.mdl'"), "1");
}

TEST_F(Catalog, HoldsWholeModelsWhenItIsKilled) {
    putRandom(60);
    expectAsFresh("fresh.db");
    const Catalogue whole(pathOf("fresh.db"));
    const std::string rowsByModel =
        "SELECT path, count(*) FROM element JOIN model ON model.id = element.model GROUP BY path";
    std::map<std::string, std::string> expected;
    for (const Catalogue::Cells& row : whole.ask(rowsByModel)) {
        expected[row[0]] = row[1];
    }
    for (const char* seconds : {"0.03", "0.06", "0.1", "0.15"}) {
        std::filesystem::remove(pathOf("a.db"));
        static_cast<void>(run(std::string("timeout -s KILL ") + seconds + " $petal catalog models -q -o a.db"));
        if (std::filesystem::exists(pathOf("a.db"))) {
            const Catalogue cut(pathOf("a.db"));
            EXPECT_EQ(cut.faults(), "");
            if (cut.one("SELECT count(*) FROM sqlite_schema WHERE name = 'model'") == "1") {
                for (const Catalogue::Cells& row : cut.ask(rowsByModel)) {
                    EXPECT_EQ(row[1], expected[row[0]]) << row[0];
                }
            }
        }
        expectCatalogue();
    }
}

TEST_F(Catalog, SaysWhyAFileIsNoCatalogueOrCannotBeWritten) {
    putExamples();
    ASSERT_EQ(run("$petal catalog models -q -o a.db && cp a.db newer.db").status, 0);
    put("text.db",
        "This is a text, and it is long enough to have the head of a database, a hundred bytes that say so.\n");
    Catalogue(pathOf("newer.db")).ask("PRAGMA user_version = 99");
    put("alien.db", "");
    Catalogue(pathOf("alien.db")).ask("CREATE TABLE mine (x)");
    std::filesystem::create_directory(pathOf("folder"));
    expectRefusals("$petal catalog models -q ", {{"", 2, "a catalogue needs a file"},
                                                 {"-o text.db", 6, "'text.db' is not a catalogue"},
                                                 {"-o newer.db", 6, "is a catalogue of a newer petal"},
                                                 {"-o alien.db", 6, "'alien.db' is not a catalogue of petal"},
                                                 {"-o folder", 6, "is no regular file"},
                                                 {"-o no/where.db", 6, "cannot be opened"},
                                                 {"-o models/clinic.mdl", 2, "models/clinic.mdl"}});
    put("models/more.mdl", logicalView(classNamed("More")));
    {
        const Catalogue writer(pathOf("a.db"));
        writer.ask("BEGIN EXCLUSIVE");
        const Ended locked = run("$petal catalog models -q -o a.db");
        EXPECT_EQ(locked.status, 6);
        EXPECT_TRUE(has(locked.errors, "'a.db' is in use by another program"));
    }
    expectCatalogue();
    {
        const Catalogue reader(pathOf("a.db"));
        put("models/more.mdl", logicalView(classNamed("More") + classNamed("Most")));
        reader.ask("BEGIN");
        reader.ask("SELECT * FROM model");
        const Ended read = run("$petal catalog models -q -o a.db");
        EXPECT_TRUE(read.status == 0 || has(read.errors, "is in use by another program")) << read.errors;
    }
    expectCatalogue();
    putRandom(30);
    const Ended full = run("(ulimit -f 512; $petal catalog models -q -o full.db)");
    EXPECT_EQ(full.status, 6);
    EXPECT_TRUE(has(full.errors, "'full.db' cannot be"));
    EXPECT_EQ(Catalogue(pathOf("full.db")).faults(), "");
    EXPECT_EQ(run("$petal catalog models -q -o full.db").status, 0);
    expectAsFresh("full.db");
}

// A later run of a part must find its models there, whatever else has come or gone.
TEST_F(Catalog, PartsKeepTheirModels) {
    putRandom(30);
    const auto partsOf = [&] {
        std::map<std::string, std::string> parts; // by path
        for (const std::string part : {"1", "2", "3"}) {
            const std::string file = "part" + part + ".db";
            EXPECT_EQ(run("$petal catalog models -q --part " + part + "/3 -o " + file).status, 0);
            for (const Catalogue::Cells& row : Catalogue(pathOf(file)).ask("SELECT path FROM model")) {
                EXPECT_TRUE(parts.emplace(row.front(), part).second) << row.front() << " is in two parts";
            }
        }
        return parts;
    };
    const std::map<std::string, std::string> before = partsOf();
    EXPECT_EQ(before.size(), 30U);
    for (const std::string part : {"1", "2", "3"}) {
        const auto models = std::ranges::count(before, part, &std::pair<const std::string, std::string>::second);
        EXPECT_GT(models, 0) << part;
        EXPECT_LT(models, 30) << part;
    }
    put("models/a/first.mdl", logicalView(classNamed("First")));
    std::filesystem::remove(pathOf("models") / before.begin()->first);
    const std::map<std::string, std::string> after = partsOf();
    EXPECT_EQ(after.size(), 30U);
    EXPECT_TRUE(after.contains("a/first.mdl"));
    for (const auto& [path, part] : after) {
        EXPECT_TRUE(path == "a/first.mdl" || before.at(path) == part) << path;
    }
}

class CatalogOfFakes : public FakeBridge {};

TEST_F(CatalogOfFakes, ACrashCostsOneModel) {
    put("models/a.mdl", good);
    put("models/b.mdl", "crash\n");
    put("models/c.mdl", "exit 3\n");
    put("models/d.mdl", "hang pid\n");
    put("models/e.mdl", good);
    for (int turn = 0; turn < 2; ++turn) {
        const Ended ended = run("$petal catalog models -o a.db -j 2 --timeout 1");
        EXPECT_EQ(ended.status, 5);
        EXPECT_TRUE(has(ended.errors, turn == 0 ? "2 read, 0 unchanged, 3 failed" : "0 read, 2 unchanged, 3 failed"));
    }
    const Catalogue file(pathOf("a.db"));
    EXPECT_EQ(file.ask("SELECT path, status, coalesce(substr(failure, 1, 17), '') FROM model ORDER BY path"),
              (std::vector<Catalogue::Cells>{{"a.mdl", "imported", ""},
                                             {"b.mdl", "failed", "ended by signal 1"},
                                             {"c.mdl", "failed", "the bridge ended "},
                                             {"d.mdl", "failed", "not done within 1"},
                                             {"e.mdl", "imported", ""}}));
    EXPECT_EQ(file.one("SELECT count(*) FROM element"), "4");
    EXPECT_EQ(file.faults(), "");
}

// Small models share a process. One that ends it is read again alone, and the others are as if it were not there.
TEST_F(CatalogOfFakes, ModelsThatShareAProcessDoNotHarmEachOther) {
    const std::map<int, const char*> bad{{3, "crash\n"}, {9, "exit 3\n"}, {10, "crash\n"}, {29, "exit 3\n"}};
    for (int number = 0; number < 40; ++number) {
        const auto one = bad.find(number);
        put("models/m" + std::to_string(100 + number) + ".mdl", one != bad.end() ? one->second : good);
    }
    for (const char* file : {"one.db", "three.db"}) {
        const bool isOne = std::string_view(file) == "one.db";
        const Ended ended = run(std::string("$petal catalog models -j ") + (isOne ? "1" : "3") + " -o " + file);
        EXPECT_EQ(ended.status, 5);
        EXPECT_TRUE(has(ended.errors, "40 models: 36 read, 0 unchanged, 4 failed"));
        const Catalogue catalogue(pathOf(file));
        EXPECT_EQ(catalogue.ask("SELECT path FROM model WHERE status = 'failed' ORDER BY path"),
                  (std::vector<Catalogue::Cells>{{"m103.mdl"}, {"m109.mdl"}, {"m110.mdl"}, {"m129.mdl"}}));
        EXPECT_EQ(catalogue.one("SELECT count(*) FROM (SELECT model FROM element GROUP BY model HAVING count(*) = 2)"),
                  "36");
        EXPECT_EQ(catalogue.faults(), "");
    }
    EXPECT_TRUE(get("one.db") == get("three.db"));
}

TEST_F(CatalogOfFakes, AFileMayHaveANameLikeThatOfADatabase) {
    put("models/a.mdl", good);
    EXPECT_EQ(run("$petal catalog models -q -o ./host=a.db").status, 0);
    EXPECT_EQ(Catalogue(pathOf("host=a.db")).one("SELECT count(*) FROM model"), "1");
    EXPECT_EQ(run("$petal catalog models -q -o 'Estate 1=new.db'").status, 0);
    EXPECT_EQ(Catalogue(pathOf("Estate 1=new.db")).one("SELECT count(*) FROM model"), "1");
    const Ended server = run("$petal catalog models -q -o 'host=/nowhere dbname=a'");
    EXPECT_EQ(server.status, 6);
    EXPECT_TRUE(has(server.errors, "the database cannot be reached"));
}

} // namespace
