#include "Shell.h"

namespace {

using Names = std::set<std::string>;

/// petal with a bridge that it has never seen.
class Import : public Shell {
protected:
    Import() : Shell(PETAL_FAKE_PLUGIN) { put("m", "package A\nlog WARNING careful\nlog STATUS going on\n"); }
};

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

constexpr const char* jsonStart = "{\n  \"format\": \"petal-model\",";
constexpr const char* outline = "model made by the fake\n  package A\n";

TEST_F(Import, WritesTheModelAndTheLog) {
    const Ended plain = run("$petal import m -q");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.output.find(jsonStart), 0U) << plain.output;
    EXPECT_EQ(plain.errors, "WARNING: [FAKE_X0001] careful\n");

    const Ended tree = run("$petal import m -q --format tree --log-level status --log-format json --log log");
    EXPECT_EQ(tree.output, outline);
    EXPECT_EQ(tree.errors, "");
    EXPECT_EQ(get("log"), "{\"severity\":\"WARNING\",\"code\":\"FAKE_X0001\",\"text\":\"careful\"}\n"
                          "{\"severity\":\"STATUS\",\"code\":\"FAKE_X0001\",\"text\":\"going on\"}\n");

    const Ended toFile = run("$petal import m -q -o out --log -");
    EXPECT_EQ(toFile.output, "");
    EXPECT_EQ(toFile.errors, plain.errors);
    EXPECT_EQ(get("out"), plain.output);

    const Ended none = run("$petal import m -q --format none -o untouched --log-level ERROR");
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.output + none.errors, "");
    EXPECT_EQ(files(), (Names{"m", "log", "out"}));
}

TEST_F(Import, OutlinesOnATerminal) {
    const Ended ended = run(R"(script -qec "$petal import m -q --log log" /dev/null | tr -d '\r')");
    EXPECT_EQ(ended.output, outline);
}

TEST_F(Import, HandsOptionsToTheBridge) {
    put("gbk", "(object Petal charSet 134)\n");
    put("odd", "(object Petal charSet 7)\n");
    put("cut", "(object Petal charSet 134");
    ASSERT_EQ(run("mkfifo pipe").status, 0);
    struct Row {
        const char* arguments;
        const char* expected; // the types and the encoding that the bridge was given
    };
    constexpr Row rows[] = {
        {"m", "Alpha, windows-1252"},
        {"gbk", "Alpha, windows-936"},
        {"gbk --units skip", "Alpha, windows-936"},
        {"odd", "Alpha, windows-1252"},
        {"cut", "Alpha, windows-1252"},                        // of a number that may have gone on
        {"pipe & cat gbk >pipe; wait", "Alpha, windows-1252"}, // which can be read once
        {"gbk --encoding auto", "Alpha, windows-936"},
        {"gbk --encoding KOI8-R", "Alpha, KOI8-R"},
        {"gbk --encoding unknown", "Alpha, unknown"},
        {"m --encoding utf8", "Alpha, utf8"}, // a name that is not listed but that ICU knows
        {"m --types 'Beta 2'", "Beta 2, windows-1252"},
    };
    for (const Row& row : rows) {
        const Ended ended = run(std::string("$petal import ") + row.arguments);
        EXPECT_TRUE(contains(ended.output, ("\"description\": \"" + std::string(row.expected) + "\"").c_str()))
            << row.arguments << ended.output << ended.errors;
    }
}

struct Refused {
    const char* command;
    int status;
    const char* errors; // a part of them
};

class Refusals : public Import, public testing::WithParamInterface<Refused> {};

TEST_P(Refusals, SayWhyAndLeaveNothing) {
    put("old", "precious");
    put("fails", "package A\nthrow [FAKE_F0002] it \x1B[1m is broken\n");
    const Names before = files();
    const Ended ended = run(GetParam().command);
    EXPECT_EQ(ended.status, GetParam().status) << ended.errors;
    EXPECT_TRUE(contains(ended.errors, GetParam().errors)) << ended.errors;
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(get("old"), "precious");
    EXPECT_EQ(get("m").find("package"), 0U);
}

constexpr Refused refusals[] = {
    {"$petal import fails", 1, "petal: [FAKE_F0002] it \\x1b[1m is broken\npetal: "},
    {"$petal import fails -o old", 1, "[FAKE_F0002]"},
    {"$petal import fails -o new", 1, "[FAKE_F0002]"},
    {"$petal import missing", 1, "[FAKE_F0001] cannot open missing\npetal: No such file or directory. Check"},
    {"$petal import m --types alpha", 2,
     "--types: 'alpha' is none of \"Alpha\", \"Beta 2\"\npetal: Run 'petal options'"},
    {"$petal import m --encoding frob", 2, "--encoding: there is no encoding 'frob'\npetal: Run 'petal options'"},
    {"$petal import m --encoding ''", 2, "there is no encoding ''"},
    {"$petal import m --encoding UTF-16", 2, "--encoding: there is no encoding 'UTF-16'\npetal: Run 'petal options'"},
    {"$petal import m --encoding utf_32le", 2, "there is no encoding 'utf_32le'"},
    {"$petal import m --encoding ibm-37", 2, "there is no encoding 'ibm-37'"},
    {"$petal import m --format xml", 2, "--format"},
    {"$petal import", 2, "FILE is required"},
    {"$petal import m -o missing/out", 6, "cannot write 'missing/out': No such file or directory\npetal: Create the"},
    {"$petal import m -o .", 6, "cannot write '.': Is a directory"},
    {"$petal import m -o ''", 6, "cannot write ''"},
    {"$petal import m -o /dev/full", 6, "cannot write '/dev/full': No space left on device\npetal: Free"},
    {"$petal import m >/dev/full", 6, "cannot write standard output: No space left on device"},
    {"$petal import m >&-", 6, "cannot write standard output: Bad file descriptor"},
    {"$petal import m --log missing/log", 6, "cannot write the log 'missing/log': No such file"},
    {"$petal import m --format none --log /dev/full", 6, "cannot write the log '/dev/full': No space left"},
    {"$petal import m -o m", 2, "would overwrite 'm'"},
    {"$petal import old --log old", 2, "would overwrite 'old'"},
    {"$petal import m --log old -o ./old", 2, "would overwrite './old'"},
    {"$petal options >/dev/full", 6, "cannot write standard output"},
    {"$petal --help >/dev/full", 6, "cannot write standard output"},
    {"$petal", 2, "petal --help"},
    {"PETAL_PLUGIN=/missing.so $petal import m", 1, "cannot be loaded: /missing.so"},
    {"PETAL_PLUGIN=m $petal options", 1, "PETAL_PLUGIN"},
    {"PETAL_PLUGIN=$(dirname $PETAL_PLUGIN)/libkel.so $petal spec", 1, "getKelIbmRationalRose40ImportInterface"},
};

INSTANTIATE_TEST_SUITE_P(All, Refusals, testing::ValuesIn(refusals),
                         [](const auto& row) { return "row" + std::to_string(row.index); });

TEST_F(Import, AClosedPipeIsAnError) {
    put("big", "package A\nclasses 20000\n");
    const Ended ended = run("{ $petal import big; echo $? >&2; } | head -c 10 >/dev/null");
    EXPECT_TRUE(contains(ended.errors, "petal: cannot write standard output: Broken pipe\n")) << ended.errors;
    EXPECT_TRUE(contains(ended.errors, "\n6\n")) << ended.errors;
}

TEST_F(Import, ATooLargeFileLeavesNothing) {
    put("big", "package A\nclasses 20000\n");
    put("old", "precious");
    const Names before = files();
    const Ended ended = run("ulimit -f 64; $petal import big -o old");
    EXPECT_EQ(ended.status, 6);
    EXPECT_TRUE(contains(ended.errors, "cannot write 'old': File too large")) << ended.errors;
    EXPECT_EQ(files(), before);
    EXPECT_EQ(get("old"), "precious");
}

TEST_F(Import, FileNamesAreBytes) {
    for (const char* locale : {"C", "C.UTF-8"}) {
        for (const char* name : {"caf\xE9", "caf\xC3\xA9", "a b", "{}"}) {
            put(name, "package A\n");
            const Ended ended = run(std::string("LC_ALL=") + locale + " $petal import '" + name + "' --format tree");
            EXPECT_EQ(ended.output, outline) << locale << " " << name << ended.errors;
        }
    }
}

TEST_F(Import, OtherOpenFilesAreWrittenInPlace) {
    put("log", "kept\n");
    EXPECT_EQ(run("$petal import m -q --format tree -o /dev/stdout --log /dev/stderr >>log 2>>log").status, 0);
    EXPECT_EQ(get("log"), std::string("kept\nWARNING: [FAKE_X0001] careful\n") + outline);
    EXPECT_EQ(run("mkfifo pipe; cat pipe >copy & $petal import m --format tree -o pipe; wait").status, 0);
    EXPECT_EQ(get("copy"), outline);
    EXPECT_TRUE(std::filesystem::is_fifo(pathOf("pipe")));
}

TEST_F(Import, NoFileTakesThePlaceOfAClosedStream) {
    EXPECT_EQ(run("$petal import m --format tree -o out --log log <&- >&- 2>&-").status, 0);
    EXPECT_EQ(get("out"), outline);
    EXPECT_EQ(get("log"), "WARNING: [FAKE_X0001] careful\n");
}

TEST_F(Import, TheLogReachesItsFileWhenTheBridgeEndsTheProcess) {
    put("ends", "log WARNING last words\nexit 2\n");
    put("old", "precious");
    EXPECT_EQ(run("$petal import ends --log log -o old").status, 2);
    EXPECT_EQ(get("log"), "WARNING: [FAKE_X0001] last words\n");
    EXPECT_EQ(get("old"), "precious");
    EXPECT_EQ(files(), (Names{"m", "ends", "old", "log"}));
}

TEST_F(Import, PrintsWhatTheBridgeOffers) {
    const Ended options = run("$petal options");
    EXPECT_TRUE(contains(options.output, "File (FILE)\n  The file.\n  Files: *.mdl, *.cat\n  Required.\n\n"))
        << options.output;
    EXPECT_TRUE(contains(options.output, "Supported types (--types)\n  Where types come from\n  or go to\n  Values:\n"
                                         "    Alpha\n    Beta 2  The second\n  Default: Alpha\n"))
        << options.output;
    EXPECT_TRUE(contains(options.output, "  Default: windows-1252\n")) << options.output;
    EXPECT_EQ(run("$petal spec").output, "Vendor: Vendor\nTool: Tool\nWeb page: http://web\nMethodology: Methods\n"
                                         "Bridge version: 9.8.7\nDescription: IbmRationalRose40Import\n"
                                         "Mapping specification: FakeMapping\n");
    EXPECT_TRUE(contains(run("$petal --version").output, "\nbridge: 9.8.7\n"));
    const Ended withoutBridge = run("PETAL_PLUGIN=/missing.so $petal --version");
    EXPECT_EQ(withoutBridge.status, 1);
    EXPECT_EQ(withoutBridge.output.find("petal "), 0U);
    EXPECT_TRUE(contains(run("$petal import --help").output, "--log-format"));
}

} // namespace
