#include "petal/commandLine.h"

#include "petal/Failure.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using petal::Command;
using petal::Request;
using Arguments = std::vector<const char*>;

Request parse(Arguments arguments) {
    arguments.insert(arguments.begin(), "petal");
    return petal::parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

TEST(CommandLine, FindsTheCommand) {
    struct Row {
        Arguments arguments;
        Command expected;
    };
    const Row rows[] = {
        {{"--help"}, Command::help},
        {{"import", "-h"}, Command::help},
        {{"--version"}, Command::version},
        {{"options"}, Command::options},
        {{"spec"}, Command::specification},
        {{"import", "a.mdl"}, Command::import},
        {{"import", "spec"}, Command::import}, // a file of that name
        {{"info", "a", "b"}, Command::info},
        {{"report", "merge", "a"}, Command::mergeReports},
        {{"import", "--files-from", "-", "-0"}, Command::import},
        {{"formats", "json"}, Command::formats},
        {{"textconv", "a"}, Command::textconv},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parse(row.arguments).command, row.expected) << row.arguments.front();
    }
}

TEST(CommandLine, TakesFileNamesAsTheyAre) {
    for (const char* name : {"a b", "caf\xE9", "{}", "[a,b]", "import", "", "a=b", "\"q\""}) {
        EXPECT_EQ(parse({"import", name}).jobs.inputs, std::vector<std::string>{name});
        EXPECT_EQ(parse({"import", "x", name, "y"}).jobs.inputs, (std::vector<std::string>{"x", name, "y"}));
        EXPECT_EQ(parse({"import", "x", "-o", name}).import.output, name);
    }
    EXPECT_EQ(parse({"import", "--", "-x"}).jobs.inputs, std::vector<std::string>{"-x"});
    EXPECT_EQ(parse({"import", "x", "-o", "-"}).import.output, "-");
    EXPECT_EQ(parse({"info", "[a,b]"}).info.files, std::vector<std::string>{"[a,b]"});
    EXPECT_EQ(parse({"info", "caf\xE9", "-", "--json"}).info.files, (std::vector<std::string>{"caf\xE9", "-"}));
}

TEST(CommandLine, HasDefaults) {
    const petal::ImportRequest request = parse({"import", "x"}).import;
    EXPECT_EQ(request.types, std::nullopt);
    EXPECT_EQ(request.encoding, "auto");
    EXPECT_EQ(request.format, std::nullopt);
    EXPECT_EQ(request.output, std::nullopt);
    EXPECT_EQ(request.logLevel, "WARNING");
    EXPECT_EQ(request.logFormat, "text");
    EXPECT_EQ(request.log, std::nullopt);
    EXPECT_EQ(parse({"import", "x", "--log-level", "debug"}).import.logLevel, "DEBUG");
    EXPECT_EQ(parse({"import", "-O", "a=b", "x", "-f", "tree", "-O", "[c]"}).import.formatOptions,
              (std::vector<std::string>{"a=b", "[c]"}));
}

TEST(CommandLine, RefusesWrongUsage) {
    const Arguments rows[] = {
        {},
        {"frob"},
        {"import"},
        {"info"},
        {"info", "a", "--xml"},
        {"import", "-0", "a"},
        {"import", "a", "-j", "0"},
        {"import", "a", "-j", "-1"},
        {"import", "a", "--timeout", "0"},
        {"import", "a", "--timeout", "nan"},
        {"import", "a", "--max-memory", "lots"},
        {"import", "a", "--max-memory", "-5M"},
        {"import", "a", "--in-process", "--timeout", "1"},
        {"import", "a", "--keep-going", "--fail-fast"},
        {"report"},
        {"report", "merge"},
        {"import", "a", "--format"},
        {"import", "a", "--format", "xml"},
        {"import", "a", "--format", "JSON"},
        {"import", "a", "--log-level", "LOUD"},
        {"import", "a", "--log-format", "xml"},
        {"import", "a", "-o", "b", "-o", "c"},
        {"import", "a", "--frob"},
        {"options", "a"},
        {"spec", "options"},
        {"formats", "xml"},
        {"textconv"},
        {"textconv", "a", "b"},
    };
    for (const Arguments& row : rows) {
        try {
            static_cast<void>(parse(row));
            ADD_FAILURE() << (row.empty() ? "nothing" : row.back()) << " is taken";
        } catch (const petal::Failure& failure) {
            EXPECT_EQ(failure.getOutcome(), petal::Outcome::wrongUsage);
            EXPECT_NE(failure.getAdvice().find("petal --help"), std::string::npos);
        }
    }
    EXPECT_THROW(static_cast<void>(petal::parseCommandLine(0, Arguments{nullptr}.data())), petal::Failure);
}

TEST(CommandLine, ReadsHowToGoThroughFiles) {
    const petal::JobsRequest jobs = parse({"import", "a", "b", "-j", "4", "--timeout", "1.5", "--max-memory", "64M",
                                           "--resume", "--fail-fast", "-q", "--report", "r"})
                                        .jobs;
    EXPECT_EQ(jobs.inputs, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(jobs.parallel, 4);
    EXPECT_EQ(jobs.timeout, 1.5);
    EXPECT_EQ(jobs.maxMemory, std::uint64_t{64} << 20);
    EXPECT_TRUE(jobs.resume && jobs.failFast && jobs.quiet);
    EXPECT_EQ(jobs.report, "r");
    EXPECT_EQ(parse({"import", "a", "--max-memory", "2g"}).jobs.maxMemory, std::uint64_t{2} << 30);
}

} // namespace
