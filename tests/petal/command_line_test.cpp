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
        {{"--help"}, Command::help},           {{"import", "-h"}, Command::help},
        {{"--version"}, Command::version},     {{"options"}, Command::options},
        {{"spec"}, Command::specification},    {{"import", "a.mdl"}, Command::import},
        {{"import", "spec"}, Command::import}, // a file of that name
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parse(row.arguments).command, row.expected) << row.arguments.front();
    }
}

TEST(CommandLine, TakesFileNamesAsTheyAre) {
    for (const char* name : {"a b", "caf\xE9", "{}", "[a,b]", "import", "", "a=b", "\"q\""}) {
        EXPECT_EQ(parse({"import", name}).import.file, name);
        EXPECT_EQ(parse({"import", "x", "-o", name}).import.output, name);
    }
    EXPECT_EQ(parse({"import", "--", "-x"}).import.file, "-x");
    EXPECT_EQ(parse({"import", "x", "-o", "-"}).import.output, "-");
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
}

TEST(CommandLine, RefusesWrongUsage) {
    const Arguments rows[] = {
        {},
        {"frob"},
        {"import"},
        {"import", "a", "b"},
        {"import", "a", "--format"},
        {"import", "a", "--format", "xml"},
        {"import", "a", "--format", "JSON"},
        {"import", "a", "--log-level", "LOUD"},
        {"import", "a", "--log-format", "xml"},
        {"import", "a", "-o", "b", "-o", "c"},
        {"import", "a", "--frob"},
        {"options", "a"},
        {"spec", "options"},
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

TEST(ExitStatus, EveryOutcomeHasOne) {
    using enum petal::Outcome;
    struct Row {
        petal::Outcome outcome;
        int number;
    };
    for (const Row& row : {Row{success, 0}, Row{importFailed, 1}, Row{bridgeNotLoaded, 1}, Row{outputFailed, 1},
                           Row{unexpected, 1}, Row{wrongUsage, 2}}) {
        EXPECT_EQ(petal::exitNumber(row.outcome), row.number);
    }
}

} // namespace
