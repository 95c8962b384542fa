#include "petal/Shell.h"

namespace {

class LedgerCommand : public Shell {
protected:
    LedgerCommand() : Shell("") {
        put("m", "\n(object Petal\n version 42\n charSet 134)\n(object Design \"Logical View\"\n"
                 " root_category (object Class_Category \"Logical View\"\n logical_models (list l\n"
                 "  (object Class \"A\"\n   documentation \"\xB7 \x1b\"\n   class_attributes (list l\n"
                 "    (object ClassAttribute \"x\"\n     quid \"1\")\n    (object ClassAttribute \"x\"\n"
                 "     type \"int\"))))))\n)\n");
        put("clean", "\n(object Petal\n version 42\n charSet 0)\n");
    }
};

constexpr const char* summary =
    "petal: objects: 4 imported, 1 changed, 1 dropped\n"
    "petal: properties: 4 imported, 1 changed, 3 dropped\n"
    "petal: losses: 2, bytes that are not in the encoding: 1, damages: 1; --ledger FILE tells of each\n";

TEST_F(LedgerCommand, WritesLinesAndASummary) {
    const Ended ended = run("$petal import m --format none --ledger l");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors.substr(ended.errors.find("petal:")), summary);
    const std::string lines = get("l");
    for (
        const char* line : {
            R"({"entry":"object","file":"m","line":8,"column":3,"kind":"Class","name":"A","outcome":"imported","reason":"as a class"})",
            R"({"entry":"property","file":"m","line":9,"column":4,"kind":"Class","name":"A","property":"documentation","outcome":"changed","loss":true,"reason":"bytes invalid in the file's encoding were replaced by U+FFFD"})",
            R"({"entry":"object","file":"m","line":13,"column":5,"kind":"ClassAttribute","name":"x","outcome":"dropped","loss":true,"reason":"its class already has an attribute of that name, from line 11"})",
            R"({"entry":"bytes","file":"m","line":9,"column":19,"bytes":"b7"})",
            R"({"entry":"damage","file":"m","line":15,"column":1,"damage":"surplusClose","text":"there is a closing parenthesis too many here or further up"})",
            R"({"entry":"properties","count":1,"file":"m","line":12,"column":6,"kind":"ClassAttribute","property":"quid","outcome":"dropped","reason":"identifiers are not kept"})",
            R"({"entry":"kind","kind":"ClassAttribute","objects":{"imported":0,"changed":1,"dropped":1},"properties":{"imported":0,"changed":0,"dropped":2}})",
            R"({"entry":"total","objects":{"imported":4,"changed":1,"dropped":1},"properties":{"imported":4,"changed":1,"dropped":3},"losses":2,"badBytes":1,"damages":1})",
        }) {
        EXPECT_NE(lines.find(std::string(line) + "\n"), std::string::npos) << line << "\n" << lines;
    }
    EXPECT_EQ(run("$petal import m --format none --ledger - -q").output, lines);
    EXPECT_EQ(run("$petal import m --format none --ledger - -q --ledger-detail all | grep -c '\"entry\":\"property\"'")
                  .output,
              "8\n");
    const Ended table =
        run(R"(script -qec "$petal import m -q --format none --ledger - --log log" /dev/null | tr -d '\r')");
    EXPECT_NE(table.output.find("LOST\tm:13:5\tClassAttribute x: its class already has an attribute"),
              std::string::npos)
        << table.output;
    EXPECT_EQ(table.output.find('\x1b'), std::string::npos);
}

TEST_F(LedgerCommand, FailsOnWhatIsAsked) {
    struct Row {
        const char* arguments;
        int status;
    };
    for (const Row& row : {
             Row{"m --fail-on loss", 3},
             Row{"m --fail-on encoding", 3},
             Row{"m --fail-on damage", 3},
             Row{"m --fail-on warning,loss -q", 3},
             Row{"m --fail-on warning --log-level FATAL", 3}, // of the bytes
             Row{"clean --fail-on loss,encoding,damage --fail-on warning", 0},
             Row{"m --fail-on nothing", 2},
             Row{"m --ledger m", 2},
             Row{"m --ledger out", 2},
             Row{"m --ledger /missing/l", 6},
             Row{"/dev/stdin --ledger l <m", 0},
         }) {
        EXPECT_EQ(run(std::string("$petal import -o out ") + row.arguments).status, row.status) << row.arguments;
    }
    EXPECT_EQ(run("cat m | $petal import /dev/stdin --ledger l --format none").status, 2);
    EXPECT_EQ(run("$petal import m --ledger -").status, 2);
    EXPECT_EQ(run("rm -f kept; $petal import m -o kept --fail-on loss; test -s kept").status, 0); // all is written
}

// Each file's ledger is what it would have alone; a resumed run does again what has none that is whole.
TEST_F(LedgerCommand, GoesToAFolderForSeveralFiles) {
    ASSERT_EQ(run("$petal import m --format none --ledger alone").status, 0);
    const std::string several = "$petal import m clean missing --ledger ledgers -j 2 -q --resume --report report ";
    ASSERT_EQ(run(several + "-o models").status, 5);
    EXPECT_EQ(get("ledgers/m.ledger"), get("alone"));
    EXPECT_EQ(filesBelow("ledgers"), (std::set<std::string>{"m.ledger", "clean.ledger"}));
    EXPECT_NE(get("report").find("\"ledger\": \"ledgers/m.ledger\""), std::string::npos) << get("report");
    for (const char* damage : {"sed -i '$d' ledgers/m.ledger", "rm ledgers/m.ledger", "rm models/m.json"}) {
        ASSERT_EQ(run(damage).status, 0);
        EXPECT_EQ(run(several + "-o models").status, 5);
        EXPECT_NE(get("report").find("\"imported\": 1,\n    \"upToDate\": 1,"), std::string::npos) << get("report");
        EXPECT_EQ(get("ledgers/m.ledger"), get("alone"));
    }
    EXPECT_EQ(run(several + "--format none").status, 5);
    EXPECT_NE(get("report").find("\"upToDate\": 2"), std::string::npos) << get("report");
    EXPECT_EQ(run("$petal import m clean --format none --ledger -").status, 2);
}

// What a unit holds is told of with the unit's file, and the totals are those of both files.
TEST_F(LedgerCommand, TellsOfUnitsByTheirFiles) {
    put("u.mdl", "\n(object Petal\n version 42)\n(object Design \"Logical View\"\n"
                 " root_category (object Class_Category \"Logical View\"\n logical_models (list l\n"
                 "  (object Class_Category \"P\"\n   is_unit TRUE stereotype \"s\"\n   is_loaded FALSE\n   file_name "
                 "\"p.cat\")\n"
                 "  (object Class_Category \"Q\"\n   is_unit TRUE\n   is_loaded FALSE\n   file_name \"q.cat\")\n"
                 "  (object Class_Category \"P\"\n   is_unit TRUE\n   is_loaded FALSE\n   file_name \"P.cat\"))))\n");
    put("p.cat", "\n(object Petal\n version 42)\n(object Class_Category \"P\"\n logical_models (list l\n"
                 "  (object UseCase \"U\"))\n logical_presentations \t(list l))\n");
    const std::string lines = run("$petal import u.mdl --format none --ledger -").output;
    for (
        const char* line : {
            R"("file":"u.mdl","line":7,"column":3,"kind":"Class_Category","name":"P","outcome":"imported","reason":"it stands for the content of a unit ./p.cat"})",
            R"("file":"./p.cat","line":4,"column":1,"kind":"Class_Category","name":"P","outcome":"imported","reason":"as a package"})",
            R"("file":"./p.cat","line":6,"column":3,"kind":"UseCase","name":"U","outcome":"dropped","reason":"use cases are not imported"})",
            R"("file":"u.mdl","line":11,"column":3,"kind":"Class_Category","name":"Q","outcome":"changed","loss":true,"reason":"its content is in a file that was not read: q.cat"})",
            R"("line":15,"column":3,"kind":"Class_Category","name":"P","outcome":"changed","reason":"its content is in the model where its file is named first: ./p.cat"})",
            R"({"entry":"total","objects":{"imported":6,"changed":2,"dropped":1},"properties")",
        }) {
        EXPECT_NE(lines.find(line), std::string::npos) << line << "\n" << lines;
    }
}

} // namespace
