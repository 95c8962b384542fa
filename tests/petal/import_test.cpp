// The import of a single file: what goes to the bridge, what comes out, and what is refused.

#include "Shell.h"
#include "export/exporters.h"

#include <rapidjson/document.h>

#include <algorithm>

namespace {

using namespace std::string_literals;

class Import : public FakeBridge {
protected:
    Import() { put("m", "package A\npackage B\nlog WARNING careful\nlog STATUS going on\n"); }
};

class RealBridge : public Shell {
protected:
    RealBridge() { std::filesystem::copy_file(PETAL_EXAMPLES "/bookshop.mdl", pathOf("m.mdl")); }
};

TEST_F(Import, WritesTheModelAndTheLog) {
    const Ended plain = run("$petal import m -q");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.output.find("{\n  \"format\": \"petal-model\","), 0U) << plain.output;
    EXPECT_EQ(plain.errors, "WARNING: [FAKE_X0001] careful\n");
    const Ended toFile = run("$petal import m -q -o out --log -");
    EXPECT_EQ(toFile.output, "");
    EXPECT_EQ(toFile.errors, plain.errors);
    EXPECT_EQ(get("out"), plain.output);
    const Ended none = run("$petal import m -q --format none -o untouched --log-level ERROR");
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.output + none.errors, "");
    EXPECT_EQ(files(), (Names{"m", "out"}));
    EXPECT_EQ(run(R"(script -qec "$petal import m -q --log log" /dev/null | tr -d '\r')").output, outline);
}

TEST_F(Import, LogsALineForEachEvent) {
    struct Row {
        const char* arguments;
        const char* events;
        const char* expected;
    };
    constexpr Row rows[] = {
        {"unknown", "log WARNING a \x1B[1m\v\xE9|", "WARNING: [FAKE_X0001] a \\x1b[1m\\n\\xe9\n"},
        {"windows-936", "log WARNING \xD6\xD0|more", "WARNING: [FAKE_X0001] \xE4\xB8\xAD more\n"},
        {"unknown --log-format json --log-level status", "log WARNING \"a\"\v\xE9\nlog STATUS b\nlog DEBUG c",
         "{\"severity\":\"WARNING\",\"code\":\"FAKE_X0001\",\"text\":\"\\\"a\\\"\\n\uFFFD\"}\n"
         "{\"severity\":\"STATUS\",\"code\":\"FAKE_X0001\",\"text\":\"b\"}\n"},
    };
    for (const Row& row : rows) {
        put("events", row.events);
        EXPECT_EQ(run("$petal import events -q --format none --log log --encoding "s + row.arguments).errors, "");
        EXPECT_EQ(get("log"), row.expected);
    }
}

TEST_F(Import, HandsOptionsToTheBridge) {
    put("gbk", "(object Petal charSet 134)\n");
    put("odd", "(object Petal charSet 7)\n");
    put("cut", "(object Petal charSet 134");
    ASSERT_EQ(run("mkfifo pipe").status, 0);
    const std::pair<const char*, const char*> rows[] = {
        // the types and the encoding that the bridge is given
        {"gbk", "Alpha, windows-936"},
        {"gbk --units skip", "Alpha, windows-936"},
        {"odd", "Alpha, windows-1252"},
        {"cut", "Alpha, windows-1252"},                        // of a number that may have gone on
        {"pipe & cat gbk >pipe; wait", "Alpha, windows-1252"}, // which can be read once
        {"m --encoding utf8", "Alpha, utf8"},                  // a name that is not listed but that ICU knows
        {"m --types 'Beta 2'", "Beta 2, windows-1252"},
    };
    for (const auto& [arguments, expected] : rows) {
        const Ended ended = run("$petal import "s + arguments);
        EXPECT_TRUE(has(ended.output, "\"description\": \""s + expected + "\"")) << arguments << ended.errors;
    }
}

TEST_F(Import, RefusalsSayWhyAndLeaveNothing) {
    put("old", "precious");
    put("big", "package A\nclasses 20000\n");
    put("fails", "package A\nthrow [FAKE_F0002] it \x1B[1m is broken\n");
    expectRefusals(
        "",
        {
            {"$petal import fails -o old", 1, "petal: [FAKE_F0002] it \\x1b[1m is broken\npetal: "},
            {"$petal import missing", 1, "[FAKE_F0001] cannot open missing\npetal: No such file or directory. Ch"},
            {"$petal import m --types alpha", 2, "'alpha' is not one of \"Alpha\", \"Beta 2\"\npetal: Run 'petal opt"},
            {"$petal import m --encoding frob", 2, "--encoding: there is no encoding 'frob'\npetal: Run 'petal op"},
            {"$petal import m --encoding UTF-16", 2, "--encoding: there is no encoding 'UTF-16'"},
            {"$petal import m -o missing/out", 6, "cannot write 'missing/out': No such file or directory\npetal: C"},
            {"$petal import m -o .", 6, "cannot write '.': Is a directory"},
            {"$petal import m -o ''", 6, "cannot write ''"},
            {"$petal import m -o /dev/full", 6, "cannot write '/dev/full': No space left on device\npetal: Free"},
            {"$petal import m -o /proc/none", 6, "cannot write '/proc/none'"},
            {"ulimit -f 64; $petal import big -o old", 6, "cannot write 'old': File too large"},
            {"$petal import m >&-", 6, "cannot write standard output: Bad file descriptor"},
            {"$petal import m --log missing/log", 6, "cannot write the log 'missing/log': No such file"},
            {"$petal import m --format none --log /dev/full", 6, "cannot write the log '/dev/full': No space left"},
            {"$petal import m -o m", 2, "would overwrite 'm'"},
            {"$petal import m --log old -o ./old", 2, "would overwrite './old'"},
            {"$petal options >/dev/full", 6, "cannot write standard output: No space left on device"},
            {"$petal", 2, "petal --help"},
            {"PETAL_PLUGIN=/missing.so $petal import m", 1, "cannot be loaded: /missing.so"},
            {"PETAL_PLUGIN=m $petal options", 1, "PETAL_PLUGIN"},
            {"PETAL_PLUGIN=$(dirname $PETAL_PLUGIN)/libkel.so $petal spec", 1, "getKelIbmRationalRose40Import"},
            {"bash -c 'set -o pipefail; $0 import big | head -c 10 >/dev/null' $petal", 6,
             "petal: cannot write standard output: Broken pipe\n"},
        });
}

// Whatever the locale, and whether or not the name is in its encoding, the bridge gets the very bytes.
TEST_F(Import, FileNamesAreBytes) {
    const Names names{"caf\xE9",  "caf\xC3\xA9",      "a b",  "{}",
                      "\xD6\xD0", "\xEF\xBB\xBFmark", "\x81", "\xE4\xB8\xAD\x80"};
    std::filesystem::remove(pathOf("m"));
    for (const std::string& name : names) {
        put(name, good);
    }
    const Ended ended = run(R"(for locale in C C.UTF-8 en_US.ISO-8859-1 zh_CN.GBK ja_JP.EUC-JP; do
        for name in *; do LC_ALL=$locale $petal import "$name" -q -f tree | head -n 1; done; done)");
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(ended.output, '\n')), 5 * names.size()) << ended.output;
    EXPECT_EQ(ended.errors, "");
}

TEST_F(Import, OtherOpenFilesAreWrittenInPlace) {
    put("log", "kept\n");
    EXPECT_EQ(run("$petal import m -q --format tree -o /dev/stdout --log /dev/stderr >>log 2>>log").status, 0);
    EXPECT_EQ(get("log"), "kept\nWARNING: [FAKE_X0001] careful\n"s + outline);
    EXPECT_EQ(run("mkfifo pipe; cat pipe >copy & $petal import m --format tree -o pipe; wait").status, 0);
    EXPECT_EQ(get("copy"), outline);
    EXPECT_TRUE(std::filesystem::is_fifo(pathOf("pipe")));
    EXPECT_EQ(run("$petal import m --format tree -o out --log log <&- >&- 2>&-").status, 0);
    EXPECT_EQ(get("out"), outline) << "no file takes the place of a closed stream";
    EXPECT_EQ(get("log"), "WARNING: [FAKE_X0001] careful\n");
    put("ends", "log WARNING last words\nexit 2\n");
    EXPECT_EQ(run("$petal import ends --log log -o out").status, 2) << "with the log of all that happened";
    EXPECT_EQ(get("log"), "WARNING: [FAKE_X0001] last words\n");
    EXPECT_EQ(files(), (Names{"m", "log", "pipe", "copy", "out", "ends"}));
}

TEST_F(Import, PrintsWhatTheBridgeOffers) {
    const std::string options = run("$petal options").output;
    EXPECT_TRUE(has(options, "File (FILE)\n  The file.\n  Files: *.mdl, *.cat\n  Required.\n\n"));
    EXPECT_TRUE(has(options, "Supported types (--types)\n  Where types come from\n  or go to\n  Values:\n"
                             "    Alpha\n    Beta 2  The second\n  Default: Alpha\n"));
    EXPECT_TRUE(has(options, "  Default: windows-1252\n"));
    EXPECT_EQ(run("$petal spec").output, "Vendor: Vendor\nTool: Tool\nWeb page: http://web\nMethodology: Methods\n"
                                         "Bridge version: 9.8.7\nDescription: IbmRationalRose40Import\n"
                                         "Mapping specification: FakeMapping\n");
    EXPECT_TRUE(has(run("$petal --version").output, "\nbridge: 9.8.7\n"));
    const Ended withoutBridge = run("PETAL_PLUGIN=/missing.so $petal --version");
    EXPECT_EQ(withoutBridge.status, 1);
    EXPECT_EQ(withoutBridge.output.find("petal "), 0U);
    EXPECT_TRUE(has(run("$petal import --help").output, "--log-format"));
}

TEST_F(RealBridge, NeedsOnlyThePartsOfItsFormat) {
    EXPECT_EQ(run("mkdir bin; cp $petal bin; cp -a ${petal%/*}/../lib lib; rm lib/petal/*;"
                  "bin/petal import m.mdl -q -o model.json")
                  .errors,
              "");
    expectRefusals("bin/petal import m.mdl -q -o ", {{"page.html", 1, "the part 'html' of petal cannot be loaded: "}});
    EXPECT_EQ(run("cp lib/libKel*Import.so lib/petal/html.so").status, 0); // no part
    expectRefusals("bin/petal import m.mdl -q -o ", {{"page.html", 1, "petalPart"}});
    EXPECT_EQ(run("rm -r bin lib").status, 0);
}

TEST_F(RealBridge, TakesOnlyModelFiles) {
    put("late.mdl", "12345678(object Petal\n");
    put("empty.mdl", "");
    expectRefusals("$petal import ",
                   {
                       {"late.mdl -o out", 1, "petal: [QEV_RRSE_F0002] Invalid input file format\npetal: Check"},
                       {"empty.mdl", 1, "Invalid input file format\npetal: It is empty."},
                       {"''", 1, "[QEV_RRSE_F0001] Unable to open input file : \n"},
                       {"-O places=perhaps m.mdl", 2, "'places=perhaps' is not one of places=true|false\n"},
                       {"m.mdl -O frob=1", 2, "format json: there is no option 'frob'; the options are places="},
                       {"m.mdl -o m.txt -O places=true", 2, "'places'; there are no options\n"},
                       {"m.mdl -o m.puml -O diagram=None", 2, "format plantuml: there is no class diagram 'None'; the"},
                       {"m.mdl m.mdl -o out/ -O places", 2, "format json: 'places' is not NAME=VALUE; the options are"},
                   });
    const Ended link = run("ln -s $petal link; ./link --version"); // the bridge is found through links to petal
    EXPECT_TRUE(has(link.output, "\nbridge: 5.2.0 - Jun 12 2007 10:50:18\n")) << link.errors;
}

TEST_F(RealBridge, TakesTheEncodingFromTheHeader) {
    put("a.mdl", "\n(object Petal\n    version    \t50\n    charSet    \t134)\n"
                 "\n(object Class_Category \"Logical View\"\n(object Class \"\xD6\xD0\"\n"
                 "    classAttributes \t(list class_attribute_list\n"
                 "(object ClassAttribute \"a\"\n    type \"NUMBER(10,2)\")))\n");
    const std::pair<const char*, const char*> rows[] = {{"", "\"name\": \"\xE4\xB8\xAD\""},
                                                        {"--encoding KOI8-R --format tree", "class \xD0\xB6\xD0\xBF\n"},
                                                        {"--encoding unknown", "\"lossy\": true"},
                                                        {"--types 'Oracle 7.x & 8'", "\"scale\": 2"}};
    for (const auto& [arguments, part] : rows) {
        EXPECT_TRUE(has(run("$petal import a.mdl "s + arguments).output, part));
    }
    for (const char* names : {"cpp C++", "oracle 'Oracle 7.x & 8'"}) { // a short name and the bridge's
        const Ended ended = run("set -- "s + names +
                                "; $petal import a.mdl -q --types $1 >a && $petal import a.mdl -q --types \"$2\" >b && "
                                "cmp a b && $petal options | grep -F \"$2\" | grep -c \"(short: $1)\"");
        EXPECT_EQ(ended.output, "1\n") << ended.errors;
    }
}

TEST_F(RealBridge, FormatsFollowFromTheOutputsName) {
    const std::pair<const char*, const char*> rows[] = {
        {"-o out/m.TXT", "model m\n"},
        {"-o out/m.TXT -f json", "{\n"},
        {"-o out/m.json --format tree", "model m\n"},
        {"-o out/m.MD", "# m\n"},
        {"-o out/m.mmd", "---\n"},
        {"-o out/m.txt.new -O places=true -O places=false", "{\n"},
        {"-o out/ -f tree", "model m\n"} // a file of that format's ending, see below
    };
    for (const auto& [arguments, start] : rows) {
        const Ended ended = run("rm -rf out; mkdir out; $petal import m.mdl -q "s + arguments + "; head -n 1 out/*");
        EXPECT_EQ(ended.output, start) << arguments << ended.errors;
    }
    EXPECT_EQ(files("out"), Names{"m.mdl.txt"});
}

TEST_F(RealBridge, OneImportWritesSeveralForms) {
    const Ended ended =
        run("$petal import m.mdl -q -o m.json -o m.txt -O places=true --report r.json; $petal import m.mdl -f tree -q "
            "| cmp - m.txt; $petal import m.mdl -q -O places=true | cmp - m.json; grep -A 3 '\"output\"' r.json");
    EXPECT_EQ(ended.output + ended.errors, "      \"output\": [\n        \"m.json\",\n        \"m.txt\"\n      ],\n")
        << "in a process of its own";
    const Ended failed = run("rm m.json; $petal import m.mdl -q -o m.json -o none/m.txt; ls m.json");
    EXPECT_TRUE(has(failed.errors, "none/m.txt")) << "no form is replaced";
    EXPECT_EQ(failed.output, "");
    EXPECT_TRUE(has(run("$petal import m.mdl -o m.json -o m.txt -O plac=true").errors, "there is no option 'plac'"));
}

// In points, 0.24 of the file's units, upwards. The note of a class is beside it.
TEST_F(RealBridge, ClassesAreWhereTheDiagramHasThem) {
    const Ended ended = run("$petal import m.mdl -q -f dot -O positions=source | grep -o 'pos=.*!\"'");
    EXPECT_EQ(ended.output, "pos=\"72.0,-48.0!\"\npos=\"144.0,-48.0!\"\n" // Overview
                            "pos=\"72.0,-48.0!\"\npos=\"168.0,-120.0!\"\npos=\"274.4,-106.8!\"\n"
                            "pos=\"168.0,-192.0!\"\npos=\"168.0,-48.0!\"\n")
        << ended.errors;
    EXPECT_FALSE(has(run("$petal import m.mdl -q -f dot").output, "pos="));
}

TEST_F(RealBridge, TellsWhatAFormatLeavesOut) {
    const std::string told = "petal: tree: left out: 2 descriptions\n";
    EXPECT_EQ(run("$petal import m.mdl -f tree >out").errors.find(told), 0U);
    EXPECT_EQ(run("$petal import m.mdl -f tree -q >out").errors, "");
    EXPECT_EQ(run("$petal import m.mdl -f tree -q --fail-on omission >out").status, 3);
    EXPECT_EQ(run("$petal import m.mdl -q --fail-on omission >out").status, 0);
    const Ended several = run("cp m.mdl n.mdl; $petal import m.mdl n.mdl -f tree -o both/ --report - | grep omitted");
    EXPECT_TRUE(has(several.errors, "petal: tree: left out: 4 descriptions\n"));
    EXPECT_TRUE(has(several.output, "\"omitted\": 2") && has(several.output, "\"omitted\": 4")) << several.output;
}

TEST_F(RealBridge, AnOptionNamesAFurtherFile) {
    for (const char* also : {"", " --report r.json"}) { // in this process, and in one of its own
        const Ended ended = run("rm -f a.sql a.csv; $petal import m.mdl -q -o a.sql -O map=a.csv"s + also + "; ls a.*");
        EXPECT_EQ(ended.output, "a.csv\na.sql\n") << also << ended.errors;
        const Ended failed =
            run("echo > a.csv; $petal import m.mdl -q -o none/a.sql -O map=a.csv"s + also + "; cat a.csv");
        EXPECT_EQ(failed.output, "\n") << also << "both are replaced or none";
        EXPECT_TRUE(has(failed.errors, "none/a.sql")) << failed.errors;
    }
    expectRefusals("$petal import ",
                   {{"m.mdl -f sql -O map=-", 2, "would both go to standard output"},
                    {"m.mdl -o a.sql -O map=a.sql", 2, "writing 'a.sql' would overwrite"},
                    {"m.mdl -o a.sql -O map=m.mdl", 2, "writing 'm.mdl' would overwrite"},
                    {"m.mdl -o a.sql -O map=none/a.csv", 6, "none/a.csv"},
                    {"m.mdl -f sql -O name-limit=29", 2, "name-limit is a number from 30 to 63"},
                    {"m.mdl -f sql -O type-map=none", 2, "type map 'none' cannot be read"},
                    {"m.mdl m.mdl -o out/ -f sql -O map=a.csv", 2, "is one file, and there are several"}});
}

TEST_F(RealBridge, FormatsAreListedWithTheirOptions) {
    const std::string table = "\n" + run("$petal formats").output;
    rapidjson::Document listed;
    listed.Parse(run("$petal formats --json").output.c_str());
    ASSERT_FALSE(listed.HasParseError());
    rapidjson::SizeType at = 0;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        const std::string name(exporter.format);
        EXPECT_TRUE(has(table, "\n" + name + " "));
        const auto& format = listed["formats"][at++];
        EXPECT_EQ(format["name"].GetString(), name);
        EXPECT_EQ(format.HasMember("options"), !exporter.options.empty());
        const std::string options = run("$petal formats " + name).output;
        for (const exporter::Option& option : exporter.options) {
            EXPECT_TRUE(has(options, "-O " + std::string(option.name) + "=" + std::string(option.values)));
        }
    }
    EXPECT_EQ(listed["formats"].Size(), at);
    EXPECT_TRUE(has(run("$petal formats json --json").output, R"("default": "false")"));
}

// Where the file is would be a difference between two versions of a model.
TEST_F(RealBridge, TextconvSaysNothingOfThePlaceOfTheFile) {
    const std::string outline = run("$petal textconv m.mdl").output;
    EXPECT_EQ(outline.find("model\n  origin (format MDL"), 0U) << outline;
    EXPECT_EQ(run("mkdir x; cp m.mdl 'x/a b'; cd x; $petal textconv \"$PWD/a b\"").output, outline);
    EXPECT_EQ(run("echo >none; $petal textconv none").status, 1);
}

} // namespace
