#include "interface/interfaceFiles.h"
#include "petal/InputFile.h"
#include "petal/Shell.h"
#include "petal/commandLine.h"
#include "petal/exitStatus.h"

#include <gtest/gtest.h>

#include <set>

namespace {

std::string inSources(const std::string& path) {
    return petal::InputFile(PETAL_SOURCES "/" + path).readRest();
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class Completion : public Shell {
protected:
    Completion() : Shell("") {}
};

TEST(Interface, FilesInTheTreeTellOfTheCommandLineAsItIs) {
    for (const petal::InterfaceFile& file : petal::interfaceFiles()) {
        EXPECT_EQ(inSources(file.path), file.text()) << "Run: cmake --build build --target interface";
    }
}

TEST(Interface, EveryOptionIsInEveryFile) {
    for (const petal::CommandText& command : petal::commandTexts()) {
        for (const petal::OptionText& option : command.options) {
            for (const std::string& name : option.names) {
                const std::string bare = name.substr(name.find_first_not_of('-'));
                EXPECT_TRUE(contains(petal::bashCompletion(), name)) << name;
                EXPECT_TRUE(contains(petal::zshCompletion(), "'*" + name + "[")) << name;
                EXPECT_TRUE(contains(petal::fishCompletion(), (bare.size() > 1 ? " -l " : " -s ") + bare + " "))
                    << name;
            }
            EXPECT_FALSE(option.description.empty()) << command.name;
        }
    }
}

TEST_F(Completion, OffersInBashWhatFits) {
    struct Row {
        const char* words; // the last is completed
        const char* expected;
    };
    for (const Row& row : {
             Row{"petal me", ""},
             Row{"petal rep", "report"},
             Row{"petal report m", "merge"},
             Row{"petal import --fail-on enc", "encoding"},
             Row{"petal import --ledger-detail ''", "named all"},
             Row{"petal import --ledger-d", "--ledger-detail"},
             Row{"petal import --files-from x", ""},
             Row{"petal info --j", "--json"},
             Row{"petal formats t", "tree"},
         }) {
        put("script", ". " PETAL_SOURCES "/completions/petal.bash; COMP_WORDS=(" + std::string(row.words) +
                          "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _petal; echo ${COMPREPLY[*]}");
        EXPECT_EQ(run("bash script").output, std::string(row.expected) + "\n") << row.words;
    }
}

TEST(ExitStatus, EveryOutcomeIsDocumented) {
    std::set<petal::Outcome> outcomes;
    std::set<std::string_view> words;
    const std::string page = inSources("docs/cli.md");
    int before = 0;
    for (const petal::ExitStatus& status : petal::exitStatuses()) {
        EXPECT_TRUE(outcomes.insert(status.outcome).second && words.insert(status.word).second) << status.word;
        EXPECT_TRUE(contains(page, "| " + std::to_string(status.number) + " | `" + std::string(status.word) + "` | " +
                                       status.meaning + " |\n"))
            << status.word;
        EXPECT_LE(before, status.number);
        before = status.number;
    }
    EXPECT_EQ(outcomes.size(), static_cast<std::size_t>(petal::Outcome::outputFailed) + 1);
}

} // namespace
