#include "Shell.h"

namespace {

class Report : public FakeBridge {
protected:
    /// What is left of the merged reports without blanks and line ends.
    std::string merged(const std::string& reports) const {
        return run("$petal report merge " + reports + " | tr -d ' \\n'").output;
    }
};

const std::string start = R"({"format":"petal-report","formatVersion":1,"files":[)";

TEST_F(Report, ReadsBackAsItWasWritten) {
    const std::string files =
        R"({"file":"café\"q\"","state":"failed","output":["out","other"],"ledger":"l","reason":"crashed","text":"a\nb",)"
        R"("exitStatus":2,"signal":11,"objects":1,"dropped":9223372036854775807,"losses":8,"unitsFound":6,)"
        R"("unitsMissing":7,"omitted":9,"events":{"FATAL":1,"ERROR":2,"WARNING":3,"STATUS":4,"DEBUG":5}},)"
        R"({"file":"b","state":"upToDate","output":"one","dropped":2}],"totals":{"files":2,"imported":0,"upToDate":1,"failed":1,)"
        R"("notStarted":0,"objects":1,"dropped":9223372036854775807,"losses":8,"unitsFound":6,"unitsMissing":7,"omitted":9}})";
    put("whole", start + files);
    EXPECT_EQ(merged("whole"), start + files);
}

TEST_F(Report, MergingKeepsWhatWasTriedLast) {
    put("1", start + R"({"file":"a","state":"imported","objects":1},{"file":"b","state":"failed","objects":2},
                       {"file":"c","state":"notStarted"}]})");
    put("2", start + R"({"file":"d","state":"upToDate"},{"file":"a","state":"upToDate"},
                       {"file":"b","state":"imported","objects":3}]})");
    put("3", start + R"({"file":"c","state":"failed"},{"file":"a","state":"notStarted"},
                       {"file":"d","state":"notStarted"}]})");
    EXPECT_EQ(merged("1 2 3").find(start + R"({"file":"a","state":"imported","objects":1},)"
                                           R"({"file":"b","state":"imported","objects":3},)"
                                           R"({"file":"c","state":"failed"},{"file":"d","state":"notStarted"}])"),
              0U);
}

TEST_F(Report, PartsMergeToTheWhole) {
    for (const char* name : {"a.mdl", "b.mdl", "d.mdl", "\xE9.mdl"}) {
        put(name, good);
    }
    put("c.mdl", "throw [X] broken\n");
    const Ended ended =
        run(R"(ls *.mdl >list; import="$petal import -o out -q"; $import --files-from list --report whole
        mv out whole-out; head -n 2 list | $import --files-from - --report 1; tail -n +3 list >rest
        $import --files-from rest --report 2; $petal report merge 1 2 -o merged; diff -r out whole-out; cmp merged whole)");
    EXPECT_EQ(ended.output, "");
    EXPECT_TRUE(has(get("merged"), "\"file\": \"\\\\xe9.mdl\"")) << "no byte that is not UTF-8";
    const std::pair<std::string, const char*> rows[] = {
        {"", "it is not a JSON object"},
        {"[]", "it is not a JSON object"},
        {"{}", "its format is not version 1 of petal-report"},
        {R"({"format":"petal-report","formatVersion":2,"files":[]})", "its format is not version 1"},
        {start + R"({}]})", "an element of files has no file name"},
        {start + R"({"file":1,"state":"failed"}]})", "file is not a text"},
        {start + R"({"file":"a","state":"x"}]})", "unknown state 'x'"},
        {start + R"({"file":"a","state":"failed","signal":-1}]})", "signal is not a number in the allowed range"},
        {start + R"({"file":"a","state":"failed","objects":9223372036854775808}]})",
         "objects is not a number in the allowed range"},
    };
    for (const auto& [contents, errors] : rows) {
        put("bad", contents);
        expectRefusals("$petal report merge whole bad ",
                       {{"-o new", 1, "petal: 'bad' is not a report: "}, {"", 1, errors}});
    }
}

} // namespace
