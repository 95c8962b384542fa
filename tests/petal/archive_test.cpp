// Imports of several files, each in a process of its own: what is found, what is refused, and what a file costs others.

#include "Shell.h"
#include "export/Omissions.h"
#include "petal/jobs/Console.h"
#include "petal/jobs/ImportEnd.h"

#include <chrono>
#include <csignal>
#include <sstream>

namespace {

/// Memory limits cannot hold where a sanitizer reserves memory for itself.
#ifdef __SANITIZE_ADDRESS__
constexpr bool limitsHold = false;
#else
constexpr bool limitsHold = true;
#endif

class Archive : public FakeBridge {};

TEST_F(Archive, FindsModelsInFoldersAndLists) {
    for (const char* name : {"arch/b.mdl", "arch/A.MDL", "arch/sub/.hidden.Mdl", "arch/unit.cat", "arch/mdl",
                             "arch/.mdl", "alone.cat", "list/x y.mdl", "list/new\nline.mdl"}) {
        put(name, good);
    }
    std::filesystem::create_symlink("..", pathOf("arch/sub/up"));
    std::filesystem::create_symlink("nowhere", pathOf("arch/broken.mdl"));
    put("lines", "list/x y.mdl\n\narch\n./arch//b.mdl");
    const Lines found{"list/x y.mdl imported", "arch/A.MDL imported", "arch/b.mdl imported",
                      "arch/broken.mdl failed importFailed", "arch/sub/.hidden.Mdl imported"};
    const std::pair<const char*, Lines> rows[] = {
        {"--files-from - < lines", found},
        {"alone.cat arch/sub", {"alone.cat imported", "arch/sub/.hidden.Mdl imported"}},
        {"arch/b.mdl --files-from <(printf 'list/new\\nline.mdl\\0') -0",
         {"arch/b.mdl imported", "list/new\nline.mdl imported"}},
        {"./alone.cat $PWD/alone.cat arch/../alone.cat alone.cat -j 3",
         {"./alone.cat imported", pathOf("alone.cat") + " imported"}}, // two names, though of one file
        {"missing '' '[a,b]'", {"missing failed importFailed", " failed importFailed", "[a,b] failed importFailed"}},
        {"--files-from /dev/null", {}},
        {"--files-from <(printf 'alone.cat\\r\\n')", {"alone.cat imported"}},
    };
    for (const auto& [arguments, expected] : rows) {
        const Ended ended =
            run(std::string("bash -c \"\\$0 import ") + arguments + " --format none --report report\" $petal");
        EXPECT_EQ(statesIn("report"), expected) << arguments << ended.errors;
    }
}

TEST_F(Archive, MirrorsTheFoldersWhateverTheNumberAtATime) {
    Names expected{std::filesystem::path(pathOf("b.mdl.txt")).relative_path()}; // its path goes up
    for (int number = 0; number < 12; ++number) {
        const bool isGood = number % 5 != 4;
        const std::string name = "a/" + std::to_string(number % 3) + "/m" + std::to_string(number) + ".mdl";
        put(name, isGood ? good : "throw [X] broken\n");
        if (isGood) {
            expected.insert(name + ".txt");
        }
    }
    put("b.mdl", good);
    for (const std::string jobs : {"1", "5"}) {
        const Ended ended = run("$petal import a ../$(basename $PWD)/b.mdl -o out --format tree --report report" +
                                jobs + " -j " + jobs + "; status=$?; mv out out" + jobs + "; exit $status");
        EXPECT_EQ(ended.status, 5) << ended.errors;
        EXPECT_EQ(files("out" + jobs), expected);
    }
    EXPECT_EQ(run("cmp report1 report5; diff -r out1 out5").output, "");
    EXPECT_EQ(get("out1/a/0/m0.mdl.txt"), outline);
    EXPECT_TRUE(has(get("report1"), "\"objects\": 2"));
}

TEST_F(Archive, RefusesWhatWouldLoseAFile) {
    put("b.mdl", good);
    put("b.mdl.json/c.mdl", good);
    put("c.mdl", good);
    put("c.mdl.json", good);
    put("index", good);
    put("empty/file", "");
    put("list", "b.mdl\n");
    put("unit.cat", "(object Petal\n    version 42)\n(object Class_Category \"unit\")\n");
    put("." + pathOf("c.mdl"), good);
    expectRefusals(
        "$petal import ",
        {
            {"b.mdl c.mdl -o -", 2, "several models need a folder"},
            {"b.mdl c.mdl -o list", 6, "cannot write the folder 'list'"},
            {"b.mdl b.mdl.json/c.mdl -o out", 2, "the results of 'b.mdl' and 'b.mdl.json/c.mdl' would"},
            {"$PWD/c.mdl .$PWD/c.mdl -o out", 2, "would be written to one place"},
            {"c.mdl c.mdl.json -o ./", 2, "writing './c.mdl.json' would overwrite 'c.mdl.json'"},
            {"b.mdl c.mdl -o out --report c.mdl", 2, "writing 'c.mdl' would overwrite 'c.mdl'"},
            {"--files-from list -o out --log ./list", 2, "writing './list' would overwrite 'list'"},
            {"b.mdl --ledger new --report new --in-process", 2, "writing 'new' would overwrite 'new'"},
            {"b.mdl c.mdl -o out --ledger out/. --report out/c.mdl.ledger", 2, "writing 'out/c.mdl.ledger' would"},
            {"b.mdl c.mdl -o out --log unit.cat", 2, "writing 'unit.cat' would overwrite a model file"},
            {"b.mdl --report -", 2, "the model and the report would both go to standard output"},
            {"b.mdl --format none --ledger - --report -", 2, "the ledger and the report would both go to"},
            {"b.mdl --ledger -", 2, "the model and the ledger would both go to"},
            {"b.mdl c.mdl --format none --ledger -", 2, "several ledgers need a folder"},
            {"b.mdl c.mdl -o out --in-process", 2, "--in-process is for a single file"},
            {"b.mdl c.mdl -o out --report missing/r", 6, "cannot write the report 'missing/r'"},
            {"b.mdl -o /dev/null --report /dev/full", 6, "cannot write the report '/dev/full'"},
            {"index b.mdl -f html -o site", 2, "'index' and the index of the folder would both be 'site/index.html'"},
            {"b.mdl -f html -o site/ --report site/index.html", 2, "writing 'site/index.html' would overwrite"},
            {"--files-from missing -o out", 1, "cannot read 'missing'"},
            {"missing.mdl -o alone/", 1, "1 of 1 files failed"}, // its own status
            {"empty -o out", 1, "the arguments name no model file"},
        });
}

TEST_F(Archive, FailFastKeepsNothingBehindTheFailure) {
    put("1.mdl", good);
    put("2.mdl", "throw [X] broken\n");
    put("3.mdl", good);
    put("4.mdl", "throw [X] broken too\n");
    const Lines expected{"./1.mdl imported", "./2.mdl failed importFailed", "./3.mdl notStarted", "./4.mdl notStarted"};
    for (const char* jobs : {"1", "4"}) {
        const Ended ended =
            run(std::string("rm -rf out; $petal import . -o out --fail-fast --report report -j ") + jobs);
        EXPECT_EQ(ended.status, 5) << ended.errors;
        EXPECT_EQ(statesIn("report"), expected);
        EXPECT_EQ(files("out"), Names{"1.mdl.json"});
        EXPECT_FALSE(has(ended.errors, "broken too"));
    }
}

TEST_F(Archive, ResumesWhereOutputsAreOldOrDamaged) {
    for (const char* name : {"done", "changed", "cut", "missing"}) {
        put("a/" + std::string(name) + ".mdl", good);
    }
    ASSERT_EQ(run("$petal import a -o out").status, 0);
    put("out/a/cut.mdl.json", "{");
    const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
    std::filesystem::last_write_time(pathOf("out/a/cut.mdl.json"), later);
    std::filesystem::last_write_time(pathOf("a/changed.mdl"), later);
    std::filesystem::remove(pathOf("out/a/missing.mdl.json"));
    EXPECT_EQ(run("$petal import a -o out --resume --report report -j 2").status, 0);
    EXPECT_EQ(statesIn("report"),
              (Lines{"a/changed.mdl imported", "a/cut.mdl imported", "a/done.mdl upToDate", "a/missing.mdl imported"}));
    EXPECT_EQ(get("out/a/cut.mdl.json"), get("out/a/done.mdl.json"));
}

TEST_F(Archive, NamesTheFileInEveryLine) {
    put("a\x1B.mdl", "say half and half\nlog WARNING careful\nexit 2\n");
    put("b.mdl", "log WARNING careful\n" + std::string("say ") + std::string(100'000, 'x') + "\n");
    const Ended ended = run("$petal import . -o out/ -q -j 2");
    EXPECT_EQ(ended.status, 5);
    std::istringstream lines(ended.errors);
    Names seen;
    for (std::string line; std::getline(lines, line);) {
        seen.insert(line);
    }
    EXPECT_EQ(seen, (Names{"./a\\x1b.mdl: half and half", "./a\\x1b.mdl: WARNING: [FAKE_X0001] careful",
                           "petal: ./a\\x1b.mdl: the bridge ended the process with status 2: half and half",
                           "./b.mdl: WARNING: [FAKE_X0001] careful", "./b.mdl: " + std::string(100'000, 'x'),
                           "petal: 1 of 2 files failed"}));
    EXPECT_EQ(run("$petal import b.mdl -o out/ -q --log log --log-format json").status, 0);
    EXPECT_TRUE(has(get("log"), "{\"file\":\"b.mdl\",\"severity\":\"WARNING\",\"code\":\"FAKE_X0001\","));
}

TEST_F(Archive, ShowsProgressOnATerminalOnly) {
    put("a.mdl", good);
    const std::string command = "$petal import a.mdl $(seq -s ' ' 21) -o out ";
    const auto onTerminal = [&](const std::string& before, const std::string& options) {
        return run("export TERM=xterm; " + before + " script -qec \"" + command + options + "\" /dev/null").output;
    };
    const std::string coloured = onTerminal("unset NO_COLOR;", "");
    EXPECT_TRUE(has(coloured, "\r\x1B[K") && has(coloured, " of 22 files, ")) << coloured;
    EXPECT_TRUE(has(coloured, "\x1B[31mfailed "));
    EXPECT_FALSE(has(onTerminal("NO_COLOR=1", ""), "\x1B[31m"));
    EXPECT_FALSE(has(onTerminal("", "-q"), "\x1B["));
    const std::string toFile = run(command).errors;
    EXPECT_FALSE(has(toFile, "\x1B[") || has(toFile, " of 22 files,"));
    EXPECT_TRUE(has(toFile, "files                     22\nimported                   1\n"
                            "failed                    21\n  importFailed            21\n"
                            "  1: [FAKE_F0001] cannot open 1\n"));
    EXPECT_TRUE(has(toFile, "\n  20: [FAKE_F0001] cannot open 20\n  ... and 1 more\nobjects "));
    const std::pair<petal::ProgressCounts, const char*> rows[] = {
        // after ten seconds
        {{0, 10, 0}, "0 of 10 files"},
        {{25, 30, 3}, "25 of 30 files, 2.5/s, 0:02 left, 3 failed"},
        {{100, 100'100, 0}, "100 of 100100 files, 10/s, 2:46:40 left"}};
    for (const auto& [counts, text] : rows) {
        EXPECT_EQ(petal::progressText(counts, 10), text);
    }
}

// Each of these files fails in its own way. It has its own status, and keeps no other from being imported.
TEST_F(Archive, AFileCostsNoOther) {
    struct Fate {
        const char* order; // of the file
        int status;        // of petal for the file alone
        std::string reason;
        const char* errors;
    };
    std::vector<Fate> fates{
        {"throw [X] broken", 1, "importFailed", "[X] broken"},
        {"exit 2", 2, "bridgeEnded", "the bridge ended the process with status 2"},
        {"exit 0", 2, "bridgeEnded", "the bridge ended the process with status 0"},
        {"crash", 1, "crashed", "ended by signal 11 (Segmentation fault)"},
        {"hang pid", 1, "timedOut", "not done within 3 seconds"},
        {"classes 20000", 6, "outputFailed", "File too large"},
    };
    std::string command = "ulimit -f 64; $petal import --timeout 3 --report report ";
    if (limitsHold) {
        command += "--max-memory 100M ";
        fates.push_back({"eat 300", 1, "outOfMemory", "there is too little memory"});
    }
    put("old", "precious");
    Lines states{"./a.mdl imported"};
    for (const Fate& fate : fates) {
        const std::string name = "m" + std::to_string(states.size()) + ".mdl";
        put(name, std::string("package A\n") + fate.order + "\n");
        const Ended alone = run(command + name + " -o old");
        EXPECT_EQ(alone.status, fate.status) << fate.order;
        EXPECT_TRUE(has(alone.errors, fate.errors));
        EXPECT_EQ(statesIn("report"), Lines{name + " failed " + fate.reason});
        EXPECT_EQ(get("old"), "precious");
        states.push_back("./" + name + " failed " + fate.reason);
    }
    states.insert(states.end(), {"./n.mdl failed outputFailed", "./z.mdl imported"});
    for (const char* name : {"a.mdl", "n.mdl", "z.mdl"}) {
        put(name, good);
    }
    put("out/m6.mdl.json", "precious");
    std::filesystem::create_directories(pathOf("out/n.mdl.json")); // in the output's way
    const Ended several = run(command + ". -o out -j 4");
    EXPECT_EQ(several.status, 5);
    EXPECT_EQ(statesIn("report"), states);
    EXPECT_EQ(files("out"), (Names{"a.mdl.json", "m6.mdl.json", "z.mdl.json"})) << "and no temporary file";
    EXPECT_EQ(get("out/m6.mdl.json"), "precious");
    EXPECT_TRUE(has(several.errors, "petal: ./m1.mdl: [X] broken\n"));
    EXPECT_TRUE(has(several.errors, "petal: ./m6.mdl: cannot write 'out/m6.mdl.json': File too large\n"));
    EXPECT_TRUE(has(several.errors, "petal: ./n.mdl: cannot write 'out/n.mdl.json': Is a directory\n"));
    EXPECT_EQ(run("ls -A | grep petal-").output, "");
}

class RealBridgeWithinLimits : public Shell {};

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
        EXPECT_TRUE(has(ended.errors, "petal: there is too little memory")) << limit;
        EXPECT_EQ(statesIn("report"), Lines{"long.mdl failed outOfMemory"}) << limit;
    }
    EXPECT_EQ(run("$petal import long.mdl -q --format none --max-memory 400M").status, 0);
}

TEST_F(Archive, AModelCostsNoOtherItsUnits) {
    if (!limitsHold) {
        GTEST_SKIP() << "a sanitizer takes memory of its own";
    }
    for (int number = 10; number < 22; ++number) { // several to a process
        const std::string name = "u" + std::to_string(number) + ".cat";
        put("a/code/" + name, "(object Petal version 42)(object Class_Category \"c\")");
        put("a/m" + std::to_string(number) + ".mdl",
            "(object Petal version 42)(object Design \"d\"\na (object Class_Category \"c\"\nis_unit TRUE\n"
            "is_loaded FALSE\nfile_name \"" +
                (number == 11 ? std::string(50'000'000, 'x') : "$X\\\\" + name) + "\"))\n");
    }
    EXPECT_TRUE(has(run("$petal import a --format none --path-map auto --max-memory 60M").errors,
                    "petal: --path-map X=a/code finds 11 of 11\n"));
}

TEST_F(Archive, ASingleFileApartIsLikeOneInProcess) {
    put("m", "log WARNING careful\npackage A\npackage B\n");
    for (const std::string arguments :
         {"m --format tree", "m --format tree -o out; cat out", "m --format none", "m --format tree -o /dev/stdout",
          "m --format tree --log log; cat log", "missing", "m -o missing/out --log-level ERROR", "m -o /dev/full"}) {
        const Ended here = run("$petal import --in-process " + arguments);
        const Ended apart = run("$petal import --timeout 60 " + arguments);
        EXPECT_EQ(apart.status, here.status) << arguments << apart.errors;
        EXPECT_EQ(apart.output, here.output) << arguments;
        EXPECT_EQ(apart.errors, here.errors) << arguments;
    }
}

TEST(ImportEnd, GoesThroughAPipeWholeOrNotAtAll) {
    petal::ImportEnd end;
    end.text = std::string("te\0xt", 5);
    end.advice = "advice";
    const units::ModelLosses losses{.units = {{units::UnitFault::absent, "$X\\a.cat", "folder", "place", ""}, {}},
                                    .untold = 3,
                                    .provenSymbols = {"y", "z"}};
    constexpr exporter::Omission kind{"flag", "flags", "why"};
    exporter::Omissions omissions;
    omissions.add(kind, 2);
    const auto decoded = [](const std::string& bytes) {
        petal::ImportMessage message;
        for (std::string_view rest = bytes; petal::takePart(rest, message);) {
        }
        return message;
    };
    const std::string ahead = petal::encoded(losses) + petal::encoded(losses);
    const std::string bytes = petal::encoded(end);
    for (std::size_t length = 0; length < ahead.size() + bytes.size(); ++length) {
        const petal::ImportMessage cut = decoded((ahead + bytes).substr(0, length));
        EXPECT_FALSE(cut.end) << length;
        EXPECT_EQ(cut.losses.size(), std::min<std::size_t>(length * 2 / ahead.size(), 2)) << length;
    }
    const petal::ImportMessage message =
        decoded(petal::encoded("uml", omissions) + ahead + petal::encoded("uml", omissions) + bytes);
    EXPECT_EQ(message.omissions.lines(), std::vector<std::string>{"uml: left out: 4 flags"});
    ASSERT_EQ(message.losses.size(), 2U);
    EXPECT_EQ(petal::encoded(message.losses[1]), petal::encoded(losses));
    EXPECT_EQ(petal::encoded(message.end.value()), bytes);
    EXPECT_EQ(message.end->text, end.text);
}

/// A shell's words to start petal and go on once the bridge says in each file that it is under way.
std::string started(const std::string& arguments, const std::string& files) {
    // A shell without a terminal starts a process in the background with interrupts ignored.
    return "ulimit -c 0; rm -f " + files + "; env --default-signal $petal import " + arguments + " & for f in " +
           files + "; do while [ ! -s $f ]; do sleep 0.01; done; done; ";
}

TEST_F(Archive, ASignalLeavesNothingUnderWay) {
    put("a/1.mdl", "hang pid1\n");
    put("a/2.mdl", "hang pid2\n");
    put("old", "precious");
    const std::pair<const char*, const char*> rows[] = {{"a -o out -j 2 --report report", "pid1 pid2"},
                                                        {"a/1.mdl -o old --timeout 100", "pid1"}};
    for (const auto& [arguments, pids] : rows) {
        for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
            const Ended ended = run(started(arguments, pids) + "kill -" + std::to_string(signal) + " $!; wait $!; " +
                                    "echo $? >&2; kill -0 $(cat " + pids + ") 2>/dev/null && echo alive");
            EXPECT_EQ(ended.output, "") << "no import is left";
            EXPECT_TRUE(has(ended.errors, std::to_string(128 + signal) + "\n"));
            EXPECT_EQ(files("out"), Names{});
            EXPECT_EQ(get("old"), "precious");
            EXPECT_EQ(get("report"), "(none)");
        }
    }
}

TEST_F(Archive, TheNextRunRemovesWhatAKilledOneLeft) {
    put("a/hangs.mdl", "hang pid\n");
    put("a/good.mdl", good);
    const std::string foreign =
        "a/.petal-00000000-0000-4000-8000-000000000000-4026531836-4000000-0"; // another machine's
    put("out/" + foreign, "");
    // The process of the import ends with petal.
    const std::string kill = "kill -KILL $!; wait $!; for i in $(seq 500); do kill -0 $(cat pid) 2>/dev/null || break; "
                             "[ $i != 500 ] || echo alive; sleep 0.01; done; ";
    const std::string count = "find . -name '.petal-*' | wc -l; ";
    const std::pair<const char*, const char*> rows[] = {
        // where the killed one writes to; the next
        {"out/", "a -o out --resume --timeout 0.3"},
        {"out/", "a/good.mdl -o out/"},
        {"single", "a/good.mdl -o model"},
        {"single", "a/good.mdl -o model --timeout 100"},
    };
    for (const auto& [output, next] : rows) {
        const Ended ended = run(started(std::string("a/hangs.mdl --timeout 100 -o ") + output, "pid") + kill + count +
                                "$petal import " + next + " -q; " + count);
        EXPECT_EQ(ended.output, "2\n1\n") << next << ended.errors;
    }
    const Ended besides = run(started("a/hangs.mdl --timeout 100 -o out/", "pid") +
                              "$petal import a/good.mdl -o out/ -q; " + count + "kill $!; wait $!; " + count);
    EXPECT_EQ(besides.output, "2\n1\n") << "that of a running petal stays" << besides.errors;
    EXPECT_TRUE(files("out").contains(foreign));
}

} // namespace
