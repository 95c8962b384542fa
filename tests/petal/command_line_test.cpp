#include "Shell.h"
#include "interface/interfaceFiles.h"
#include "petal/Failure.h"
#include "petal/commandLine.h"
#include "petal/exitStatus.h"

#include <array>
#include <sstream>

namespace {

using Arguments = std::vector<const char*>;

petal::Request parse(Arguments arguments) {
    arguments.insert(arguments.begin(), "petal");
    return petal::parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

class CommandLine : public Shell {
protected:
    [[nodiscard]] std::string inSources(const std::string& path) const { return get(PETAL_SOURCES "/" + path); }
};

TEST_F(CommandLine, TakesFileNamesAsTheyAre) {
    for (const char* name : {"a b", "caf\xE9", "{}", "[a,b]", "spec", "", "a=b", "\"q\""}) {
        EXPECT_EQ(parse({"import", name}).jobs.inputs, std::vector<std::string>{name});
        EXPECT_EQ(parse({"import", "x", name, "y"}).jobs.inputs, (std::vector<std::string>{"x", name, "y"}));
        EXPECT_EQ(parse({"import", "x", "-o", name}).import.outputs, std::vector<std::string>{name});
        EXPECT_EQ(parse({"info", name, "-", "--json"}).info.files, (std::vector<std::string>{name, "-"}));
    }
    EXPECT_EQ(parse({"import", "--", "-x"}).jobs.inputs, std::vector<std::string>{"-x"});
    EXPECT_EQ(parse({"import", "-O", "a=b", "x", "-f", "tree", "-O", "[c]"}).import.formatOptions,
              (std::vector<std::string>{"a=b", "[c]"}));
    EXPECT_EQ(parse({"import", "x", "--max-memory", "2g"}).jobs.maxMemory, std::uint64_t{2} << 30);
}

TEST_F(CommandLine, IsDescribedInEveryFileAsItIs) {
    for (const petal::InterfaceFile& file : petal::interfaceFiles()) {
        EXPECT_EQ(inSources(file.path), file.text()) << "Run: cmake --build build --target interface";
    }
    for (const petal::CommandText& command : petal::commandTexts()) {
        for (const petal::OptionText& option : command.options) {
            for (const std::string& name : option.names) {
                const std::string bare = name.substr(name.find_first_not_of('-'));
                EXPECT_TRUE(has(petal::bashCompletion(), name));
                EXPECT_TRUE(has(petal::zshCompletion(), "'*" + name + "["));
                EXPECT_TRUE(has(petal::fishCompletion(), (bare.size() > 1 ? " -l " : " -s ") + bare + " "));
            }
            EXPECT_FALSE(option.description.empty()) << command.name;
        }
    }
}

// Each tells of a rule of this command line; what the library for arguments refuses by itself is left out.
TEST_F(CommandLine, RefusesWrongUsage) {
    const Ended ended = run(R"(for arguments in '' import info 'info a --xml' 'import -0 a' 'import a -j 0' \
        'import a --timeout 0' 'import a --timeout nan' 'import a --max-memory -5M' 'import a --keep-going --fail-fast' \
        'import a --in-process --timeout 1' 'import a --in-process --max-memory 1G' report 'report merge' \
        'import a --format JSON' 'import a --log-level LOUD' 'import a --log-format xml' 'import a -o b -o b' 'import a -o - -o -' \
        'import a -f json -o b -o c' 'import a b -o c -o d' \
        'spec options' 'formats xml' textconv 'textconv a b'
        do $petal $arguments; [ $? = 2 ] || echo "$arguments"; done)");
    EXPECT_EQ(ended.output, "") << "is taken";
    EXPECT_TRUE(has(ended.errors, "\npetal: Run 'petal import --help'.\n"));
    EXPECT_TRUE(has(ended.errors, "\npetal: Run 'petal report merge --help'.\n"));
    EXPECT_THROW(static_cast<void>(petal::parseCommandLine(0, std::array<const char*, 1>{}.data())), petal::Failure);
}

TEST_F(CommandLine, OffersInBashWhatFits) {
    put("script", ". " PETAL_SOURCES R"(/completions/petal.bash
        offer() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _petal; echo "${COMPREPLY[*]}"; }
        offer petal me; offer petal rep; offer petal report m; offer petal import --fail-on enc
        offer petal import --ledger-detail ''; offer petal import --ledger-d
        offer petal import --files-from x; offer petal formats t
        offer petal import -O plac; offer petal import -O places =; offer petal import -O places = t)");
    EXPECT_EQ(run("bash script").output, "\nreport\nmerge\nencoding\nnamed all\n--ledger-detail\n\ntree\n"
                                         "places=\ntrue false\ntrue\n");
}

TEST_F(CommandLine, TheReadmeShowsWhatItWrites) {
    const std::string page = inSources("README.md");
    const std::string written = run("$petal import -q -f mermaid " PETAL_EXAMPLES "/bookshop.mdl").output;
    EXPECT_TRUE(has(page, "```mermaid\n" + written + "```\n"));
    const std::string outline = run("cd " PETAL_SOURCES "; $petal import -q -f tree examples/bookshop.mdl").output;
    EXPECT_TRUE(has(page, outline.substr(0, outline.find("        role buyer"))));
}

TEST_F(CommandLine, ThePageOfTablesShowsAModelAndItsSchema) {
    const std::string page = inSources("docs/sql.md");
    const std::string options = " " PETAL_EXAMPLES "/bookshop.mdl -O ";
    const std::string picture = run("$petal import -q -f mermaid" + options + "operations=false").output;
    EXPECT_TRUE(has(page, "```mermaid\n" + picture + "```\n"));
    const std::string script = run("$petal import -q -f sql" + options + "tables=all").output;
    const std::size_t start = page.find("```sql\n") + 7;
    std::istringstream schema(page.substr(start, page.find("\n```", start) - start));
    for (std::string line; std::getline(schema, line);) {
        EXPECT_TRUE(has(script, line)) << line;
    }
}

TEST_F(CommandLine, EveryExitStatusIsDocumented) {
    std::set<petal::Outcome> outcomes;
    std::set<std::string_view> words;
    const std::string page = inSources("docs/cli.md");
    int before = 0;
    for (const petal::ExitStatus& status : petal::exitStatuses()) {
        EXPECT_TRUE(outcomes.insert(status.outcome).second && words.insert(status.word).second) << status.word;
        EXPECT_TRUE(has(page, "| " + std::to_string(status.number) + " | `" + std::string(status.word) + "` | " +
                                  status.meaning + " |\n"));
        EXPECT_LE(before, status.number);
        before = status.number;
    }
    EXPECT_EQ(outcomes.size(), static_cast<std::size_t>(petal::Outcome::outputFailed) + 1);
}

} // namespace
