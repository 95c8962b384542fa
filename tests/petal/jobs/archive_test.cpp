#include "Archive.h"

#include <chrono>
#include <sys/stat.h>

namespace {

using Lines = std::vector<std::string>;

TEST_F(Archive, FindsModelsInFoldersAndLists) {
    for (const char* name : {"arch/b.mdl", "arch/A.MDL", "arch/sub/.hidden.Mdl", "arch/unit.cat", "arch/mdl",
                             "arch/.mdl", "alone.cat", "list/x y.mdl", "list/new\nline.mdl"}) {
        put(name, good);
    }
    std::filesystem::create_symlink("..", pathOf("arch/sub/up"));
    std::filesystem::create_symlink("nowhere", pathOf("arch/broken.mdl"));
    put("lines", "list/x y.mdl\n\narch\n./arch//b.mdl");
    struct Row {
        const char* arguments;
        Lines expected;
    };
    const Lines tree{"arch/A.MDL imported", "arch/b.mdl imported", "arch/broken.mdl failed importFailed",
                     "arch/sub/.hidden.Mdl imported"};
    const Row rows[] = {
        {"arch", tree},
        {"alone.cat arch/sub", {"alone.cat imported", "arch/sub/.hidden.Mdl imported"}},
        {"--files-from lines", {"list/x y.mdl imported", tree[0], tree[1], tree[2], tree[3]}},
        {"alone.cat --files-from - < lines",
         {"alone.cat imported", "list/x y.mdl imported", tree[0], tree[1], tree[2], tree[3]}},
        {"--files-from <(printf 'list/new\\nline.mdl\\0arch/b.mdl\\0') -0",
         {"list/new\nline.mdl imported", "arch/b.mdl imported"}},
        {"./alone.cat $PWD/alone.cat arch/../alone.cat alone.cat -j 3",
         {"./alone.cat imported", pathOf("alone.cat") + " imported"}}, // two names, though of one file
        {"alone.cat missing '' '[a,b]'",
         {"alone.cat imported", "missing failed importFailed", " failed importFailed", "[a,b] failed importFailed"}},
        {"--files-from /dev/null", {}},
        {"--files-from <(printf 'alone.cat\\r\\n')", {"alone.cat imported"}},
    };
    for (const Row& row : rows) {
        const Ended ended =
            run(std::string("bash -c \"\\$0 import ") + row.arguments + " --format none --report report\" $petal");
        EXPECT_EQ(statesIn("report"), row.expected) << row.arguments << ended.errors;
    }
    std::filesystem::create_directory(pathOf("empty"));
    EXPECT_EQ(run("$petal import empty --format none").status, 1);
}

TEST_F(Archive, MirrorsTheFoldersWhateverTheNumberAtATime) {
    for (int number = 0; number < 12; ++number) {
        put("a/" + std::to_string(number % 3) + "/m" + std::to_string(number) + ".mdl",
            number % 5 == 4 ? "throw [X] broken\n" : good);
    }
    put("b.mdl", good);
    const auto runWith = [&](const std::string& jobs) {
        return run("$petal import a ../$(basename $PWD)/b.mdl -o out --format tree --report report -j " + jobs +
                   " && false; status=$?; mv out out" + jobs + "; mv report report" + jobs + "; exit $status");
    };
    EXPECT_EQ(runWith("1").status, 5);
    EXPECT_EQ(runWith("5").status, 5);
    EXPECT_EQ(get("report1"), get("report5"));
    EXPECT_EQ(run("diff -r out1 out5").output, "");
    Names expected{std::filesystem::path(pathOf("b.mdl.txt")).relative_path()}; // its path goes up
    for (const int number : {0, 1, 2, 3, 5, 6, 7, 8, 10, 11}) {
        expected.insert("a/" + std::to_string(number % 3) + "/m" + std::to_string(number) + ".mdl.txt");
    }
    EXPECT_EQ(filesBelow("out1"), expected);
    EXPECT_EQ(get("out1/a/0/m0.mdl.txt"), outline);
    EXPECT_TRUE(contains(get("report1"), "\"objects\": 2")) << get("report1");
}

TEST_F(Archive, RefusesWhatWouldLoseAFile) {
    put("b.mdl", good);
    put("b.mdl.json/c.mdl", good);
    put("c.mdl", good);
    put("c.mdl.json", good);
    put("file", "");
    put("list", "b.mdl\n");
    put("unit.cat", "(object Petal\n    version 42)\n(object Class_Category \"unit\")\n");
    const Names before = filesBelow("");
    struct Row {
        const char* arguments;
        int status;
        const char* errors;
    };
    constexpr Row rows[] = {
        {"b.mdl c.mdl", 2, "several models need a folder"},
        {"b.mdl c.mdl -o -", 2, "several models need a folder"},
        {"b.mdl c.mdl -o file", 6, "cannot write the folder 'file'"},
        {"b.mdl c.mdl -o /proc/none", 6, "cannot write the folder '/proc/none'"},
        {"b.mdl -o /proc/none", 6, "cannot write '/proc/none'"},
        {"b.mdl -o /proc/none --timeout 9", 6, "cannot write '/proc/none'"},
        {"b.mdl b.mdl.json/c.mdl -o out", 2, "the results of 'b.mdl' and 'b.mdl.json/c.mdl' would"},
        {"c.mdl c.mdl.json -o ./", 2, "writing './c.mdl.json' would overwrite 'c.mdl.json'"},
        {"b.mdl c.mdl -o out --report c.mdl", 2, "writing 'c.mdl' would overwrite 'c.mdl'"},
        {"b.mdl --report ./b.mdl", 2, "writing './b.mdl' would overwrite 'b.mdl'"},
        {"b.mdl c.mdl -o out --log c.mdl", 2, "writing 'c.mdl' would overwrite 'c.mdl'"},
        {"--files-from list -o out --log ./list", 2, "writing './list' would overwrite 'list'"},
        {"missing.mdl -o alone/", 1, "1 of 1 files failed"}, // its own status
        {"b.mdl --report -", 2, "the model and the report would both go to standard output"},
        {"b.mdl --format none --ledger - --report -", 2, "the ledger and the report would both go to"},
        {"b.mdl -o new --report new", 2, "writing 'new' would overwrite 'new'"},
        {"b.mdl --log new --report new", 2, "writing 'new' would overwrite 'new'"},
        {"b.mdl --ledger new --report new --in-process", 2, "writing 'new' would overwrite 'new'"},
        {"b.mdl c.mdl -o out --report out/b.mdl.json", 2, "writing 'out/b.mdl.json' would overwrite 'out/b.mdl.json'"},
        {"b.mdl c.mdl -o out --log out/b.mdl.json", 2, "writing 'out/b.mdl.json' would overwrite 'out/b.mdl.json'"},
        {"b.mdl c.mdl -o out --log new --report new", 2, "writing 'new' would overwrite 'new'"},
        {"b.mdl c.mdl -o out --ledger out/. --report out/c.mdl.ledger", 2, "writing 'out/c.mdl.ledger' would"},
        {"b.mdl c.mdl -o out --log unit.cat", 2, "writing 'unit.cat' would overwrite a model file"},
        {"b.mdl c.mdl -o out --report unit.cat", 2, "writing 'unit.cat' would overwrite a model file"},
        {"b.mdl c.mdl -o out -O frob=1", 2, "format json: there is no option 'frob'"},
        {"b.mdl c.mdl -o out --in-process", 2, "--in-process is for a single file"},
        {"b.mdl c.mdl -o out --report missing/r", 6, "cannot write the report 'missing/r'"},
        {"b.mdl --report /dev/full", 6, "cannot write the report '/dev/full'"},
        {"--files-from missing -o out", 1, "cannot read 'missing'"},
    };
    for (const Row& row : rows) {
        const Ended ended = run(std::string("$petal import ") + row.arguments);
        EXPECT_EQ(ended.status, row.status) << row.arguments << ended.errors;
        EXPECT_TRUE(contains(ended.errors, row.errors)) << row.arguments << ended.errors;
        EXPECT_EQ(filesBelow(""), before) << row.arguments;
    }
    const std::string twins = "cp c.mdl .$PWD/c.mdl 2>/dev/null || install -D c.mdl .$PWD/c.mdl; "
                              "$petal import $PWD/c.mdl .$PWD/c.mdl -o out";
    EXPECT_TRUE(contains(run(twins).errors, "would be written to one place"));
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
        EXPECT_EQ(filesBelow("out"), Names{"1.mdl.json"});
        EXPECT_FALSE(contains(ended.errors, "broken too"));
    }
}

TEST_F(Archive, ResumesWhereOutputsAreOldOrDamaged) {
    for (const char* name : {"done", "changed", "cut", "missing"}) {
        put("a/" + std::string(name) + ".mdl", good);
    }
    ASSERT_EQ(run("$petal import a -o out").status, 0);
    put("out/a/cut.mdl.json", "{");
    const auto now = std::filesystem::file_time_type::clock::now();
    std::filesystem::last_write_time(pathOf("out/a/cut.mdl.json"), now + std::chrono::hours(1));
    std::filesystem::last_write_time(pathOf("a/changed.mdl"), now + std::chrono::hours(1));
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
    EXPECT_TRUE(contains(get("log"), "{\"file\":\"b.mdl\",\"severity\":\"WARNING\",\"code\":\"FAKE_X0001\","))
        << get("log");
}

TEST_F(Archive, ShowsProgressOnATerminalOnly) {
    put("a.mdl", good);
    put("b.mdl", "throw [X] broken\n");
    const auto onTerminal = [&](const std::string& before, const std::string& arguments) {
        return run("export TERM=xterm; " + before + " script -qec \"$petal import a.mdl b.mdl -o out " + arguments +
                   "\" /dev/null")
            .output;
    };
    const std::string coloured = onTerminal("unset NO_COLOR;", "");
    EXPECT_TRUE(contains(coloured, "\r\x1B[K1 of 2 files, ") || contains(coloured, "\r\x1B[K2 of 2 files, "))
        << coloured;
    EXPECT_TRUE(contains(coloured, "\x1B[31mfailed ")) << coloured;
    EXPECT_FALSE(contains(onTerminal("NO_COLOR=1", ""), "\x1B[31m"));
    EXPECT_FALSE(contains(onTerminal("", "-q"), "\x1B["));
    const Ended toFile = run("$petal import a.mdl b.mdl -o out");
    EXPECT_FALSE(contains(toFile.errors, "\x1B[") || contains(toFile.errors, "2 of 2 files,")) << toFile.errors;
    EXPECT_TRUE(contains(toFile.errors, "failed                     1\n  importFailed             1\n"
                                        "  b.mdl: [X] broken\n"))
        << toFile.errors;
}

} // namespace
