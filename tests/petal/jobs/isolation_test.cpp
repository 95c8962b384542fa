#include "Archive.h"

#include <csignal>

namespace {

/// Memory limits cannot hold where a sanitizer reserves memory for itself.
#ifdef __SANITIZE_ADDRESS__
constexpr bool limitsHold = false;
#else
constexpr bool limitsHold = true;
#endif

struct Fate {
    const char* order; // of the file
    const char* arguments;
    int status;        // of petal for the file alone
    const char* state; // in a report
    const char* errors;
};

constexpr Fate fates[] = {
    {"throw [X] broken", "", 1, "failed importFailed", "[X] broken"},
    {"exit 2", "", 2, "failed bridgeEnded", "the bridge ended the process with status 2"},
    {"exit 0", "", 2, "failed bridgeEnded", "the bridge ended the process with status 0"},
    {"crash", "", 1, "failed crashed", "ended by signal 11 (Segmentation fault)"},
    {"hang pid", "--timeout 0.3", 1, "failed timedOut", "not done within 0.3 seconds"},
    {"eat 300", "--max-memory 100M", 1, "failed outOfMemory", "there is too little memory"},
};

class Isolation : public Archive, public testing::WithParamInterface<Fate> {};

TEST_P(Isolation, AFileCostsNoOther) {
    const Fate& fate = GetParam();
    if (!limitsHold && std::string_view(fate.arguments).starts_with("--max-memory")) {
        GTEST_SKIP() << "a sanitizer takes memory of its own";
    }
    put("a.mdl", good);
    put("b.mdl", std::string("package A\n") + fate.order + "\n");
    put("c.mdl", good);
    put("old", "precious");
    const Ended several = run(std::string("$petal import . -o out --report report -j 2 ") + fate.arguments);
    EXPECT_EQ(several.status, 5) << several.errors;
    EXPECT_TRUE(contains(several.errors, std::string("petal: ./b.mdl: ") + fate.errors)) << several.errors;
    EXPECT_EQ(statesIn("report"),
              (std::vector<std::string>{"./a.mdl imported", std::string("./b.mdl ") + fate.state, "./c.mdl imported"}));
    EXPECT_EQ(filesBelow("out"), (Names{"a.mdl.json", "c.mdl.json"}));

    const Ended alone = run(std::string("$petal import b.mdl -o old --report report ") + fate.arguments);
    EXPECT_EQ(alone.status, fate.status);
    EXPECT_TRUE(contains(alone.errors, std::string("petal: ") + fate.errors)) << alone.errors;
    EXPECT_EQ(statesIn("report"), std::vector<std::string>{std::string("b.mdl ") + fate.state});
    EXPECT_EQ(get("old"), "precious");
    for (const std::string& name : filesBelow("")) {
        EXPECT_FALSE(contains(name, ".petal-")) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Isolation, testing::ValuesIn(fates),
                         [](const auto& row) { return "row" + std::to_string(row.index); });

class RealBridgeWithinLimits : public Shell {
protected:
    RealBridgeWithinLimits() : Shell("") {}
};

// The scanner's buffer, which ends the process, and the texts made of it run out at different limits.
TEST_F(RealBridgeWithinLimits, ALongLineEndsAsAnyShortage) {
    if (!limitsHold) {
        GTEST_SKIP() << "a sanitizer takes memory of its own";
    }
    put("long.mdl", "(object Petal\n    version 42\n    charSet 0)\n(object Class_Category \"Logical View\"\n"
                    "(object Class \"" +
                        std::string(50'000'000, 'x') + "\"))\n");
    for (const char* limit : {"1M", "20M", "60M", "100M", "130M"}) {
        const Ended ended =
            run(std::string("$petal import long.mdl -q --format none --report report --max-memory ") + limit);
        EXPECT_EQ(ended.status, 1) << limit;
        EXPECT_TRUE(contains(ended.errors, "petal: there is too little memory")) << limit << ended.errors;
        EXPECT_TRUE(contains(get("report"), "\"reason\": \"outOfMemory\"")) << limit << get("report");
    }
    EXPECT_EQ(run("$petal import long.mdl -q --format none --max-memory 400M").status, 0);
}

TEST_F(Archive, AModelCostsNoOtherItsUnits) {
    if (!limitsHold) {
        GTEST_SKIP() << "a sanitizer takes memory of its own";
    }
    const auto naming = [](const std::string& file) {
        return "(object Petal version 42)(object Design \"d\"\na (object Class_Category \"c\"\nis_unit TRUE\n"
               "is_loaded FALSE\nfile_name \"" +
               file + "\"))\n";
    };
    for (int number = 10; number < 22; ++number) { // several to a process
        const std::string name = "u" + std::to_string(number) + ".cat";
        put("a/code/" + name, "(object Petal version 42)(object Class_Category \"c\")");
        put("a/m" + std::to_string(number) + ".mdl",
            naming(number == 11 ? std::string(50'000'000, 'x') : "$X\\\\" + name));
    }
    const std::string command = "$petal import a --format none --path-map auto --max-memory 60M";
    const std::string errors = run(command).errors;
    EXPECT_TRUE(contains(errors, "petal: --path-map X=a/code finds 11 of 11\n")) << errors;
}

TEST_F(Archive, ASingleFileApartIsLikeOneInProcess) {
    put("m", "log WARNING careful\npackage A\npackage B\n");
    for (const char* arguments : {"m --format tree", "m --format tree -o out; cat out", "m --format none",
                                  "m --format tree -o /dev/stdout", "m --format tree --log log; cat log", "missing",
                                  "m -o missing/out --log-level ERROR", "m -o /dev/full", "m -o m"}) {
        const Ended here = run("$petal import --in-process " + std::string(arguments));
        const Ended apart = run("$petal import --timeout 60 " + std::string(arguments));
        EXPECT_EQ(apart.status, here.status) << arguments << apart.errors;
        EXPECT_EQ(apart.output, here.output) << arguments;
        EXPECT_EQ(apart.errors, here.errors) << arguments;
    }
}

TEST_F(Archive, ASignalLeavesNothingUnderWay) {
    put("a/1.mdl", "hang pid1\n");
    put("a/2.mdl", "hang pid2\n");
    put("old", "precious");
    struct Row {
        const char* arguments;
        const char* files; // of the bridge, that it is under way
    };
    constexpr Row rows[] = {{"a -o out -j 2 --report report", "pid1 pid2"}, {"a/1.mdl -o old --timeout 100", "pid1"}};
    for (const Row& row : rows) {
        for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
            // A shell without a terminal starts what is in the background with interrupts ignored.
            const Ended ended =
                run(std::string("ulimit -c 0; rm -f pid1 pid2; env --default-signal $petal import ") + row.arguments +
                    " & for f in " + row.files + "; do while [ ! -s $f ]; do sleep 0.01; done; done; kill -" +
                    std::to_string(signal) + " $!; wait $!; echo $? >&2; for f in " + row.files +
                    "; do kill -0 $(cat $f) 2>/dev/null && echo alive; done");
            EXPECT_EQ(ended.output, "") << "no import is left";
            EXPECT_TRUE(contains(ended.errors, std::to_string(128 + signal) + "\n")) << ended.errors;
            EXPECT_EQ(filesBelow("out"), Names{});
            EXPECT_EQ(get("old"), "precious");
            EXPECT_EQ(get("report"), "(none)");
        }
    }
}

TEST_F(Archive, ImportsEndWithPetal) {
    put("a.mdl", "hang pid\n");
    const Ended ended =
        run("$petal import a.mdl --timeout 100 & while [ ! -s pid ]; do sleep 0.01; done; kill -KILL $!; "
            "wait $!; for i in $(seq 500); do kill -0 $(cat pid) 2>/dev/null || exit 0; sleep 0.01; "
            "done; exit 1");
    EXPECT_EQ(ended.status, 0);
}

TEST_F(Archive, TheNextRunRemovesWhatAKilledOneLeft) {
    put("a/hangs.mdl", "hang pid\n");
    put("a/good.mdl", good);
    const std::string foreign =
        "a/.petal-00000000-0000-4000-8000-000000000000-4026531836-4000000-0"; // another machine's
    put("out/" + foreign, "");
    const std::string start = "rm -f pid; $petal import a/hangs.mdl --timeout 100 -o ";
    const std::string kill = " & while [ ! -s pid ]; do sleep 0.01; done; kill -KILL $!; wait $!; ";
    const std::string count = "find . -name '.petal-*' | wc -l; ";
    struct Row {
        const char* killed; // its output
        const char* next;
    };
    constexpr Row rows[] = {
        {"out/", "a -o out --resume --timeout 0.3"},
        {"out/", "a/good.mdl -o out/"},
        {"single", "a/good.mdl -o model"},
        {"single", "a/good.mdl -o model --timeout 100"},
    };
    for (const Row& row : rows) {
        const Ended ended = run(start + row.killed + kill + count + "$petal import " + row.next + " -q; " + count);
        EXPECT_EQ(ended.output, "2\n1\n") << row.next << ended.errors;
    }
    const Ended besides = run(start + "out/ & while [ ! -s pid ]; do sleep 0.01; done; " +
                              "$petal import a/good.mdl -o out/ -q; " + count + "kill $!; wait $!; " + count);
    EXPECT_EQ(besides.output, "2\n1\n") << "that of a running petal stays" << besides.errors;
    EXPECT_TRUE(filesBelow("out").contains(foreign));
}

TEST_F(Archive, AnOutputThatCannotBeWrittenCostsItsFileOnly) {
    put("a.mdl", good);
    put("b.mdl", "package A\nclasses 20000\n");
    put("out/b.mdl.json", "precious");
    put("c.mdl", good);
    std::filesystem::create_directories(pathOf("out/c.mdl.json"));
    const Ended ended = run("(ulimit -f 64; $petal import a.mdl b.mdl c.mdl -o out --report report)");
    EXPECT_EQ(ended.status, 5);
    EXPECT_EQ(statesIn("report"),
              (std::vector<std::string>{"a.mdl imported", "b.mdl failed outputFailed", "c.mdl failed outputFailed"}));
    EXPECT_TRUE(contains(ended.errors, "petal: b.mdl: cannot write 'out/b.mdl.json': File too large\n"))
        << ended.errors;
    EXPECT_TRUE(contains(ended.errors, "petal: c.mdl: cannot write 'out/c.mdl.json': Is a directory\n"))
        << ended.errors;
    EXPECT_EQ(get("out/b.mdl.json"), "precious");
    EXPECT_EQ(filesBelow("out"), (Names{"a.mdl.json", "b.mdl.json"}));
}

} // namespace
