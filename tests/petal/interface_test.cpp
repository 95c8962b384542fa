#include "interface/interfaceFiles.h"
#include "petal/commandLine.h"
#include "petal/exitStatus.h"
#include "petal/readWholeFile.h"

#include <gtest/gtest.h>

#include <set>

namespace {

std::string inSources(const std::string& path) {
    return petal::readWholeFile(PETAL_SOURCES "/" + path);
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

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
