// The cases of corpus/*.txt: a piece of a model file, and the outline of the model that the import makes of it.
// corpus/README.txt says how a case is written.

#include "Steps.h"
#include "support/ImportedModel.h"
#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace {

using Options = std::map<std::string, std::string, std::less<>>;

struct Case {
    std::string title;
    Options options;
    std::string input;
    std::string outline;
};

std::string_view valueOf(const Options& options, std::string_view name, std::string_view byDefault) {
    const auto found = options.find(name);
    return found != options.end() ? found->second : byDefault;
}

/// The name of the option that a line begins with; empty if it is another line.
std::string_view optionIn(std::string_view line) {
    for (const std::string_view name : {"show", "types", "encoding", "view", "file", "fails"}) {
        if (line.starts_with(name) && line.substr(name.size()).starts_with(": ")) {
            return name;
        }
    }
    return "";
}

std::vector<Case> casesIn(const std::filesystem::path& path) {
    std::ifstream file(path);
    Options common;
    std::vector<Case> cases;
    std::string* part = nullptr; // of the last case, that the lines go to
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            cases.push_back({line.substr(3), common, "", ""});
            part = &cases.back().input;
        } else if (line == "--" && part != nullptr) {
            part = &cases.back().outline;
        } else if (const std::string_view name = optionIn(line);
                   !name.empty() && (cases.empty() || cases.back().input.empty())) {
            (cases.empty() ? common : cases.back().options)[std::string(name)] = line.substr(name.size() + 2);
        } else if (part != nullptr) {
            *part += line + "\n";
        }
    }
    for (Case& each : cases) {
        const std::size_t end = each.outline.find_last_not_of('\n');
        each.outline.erase(end == std::string::npos ? 0 : end + 2);
    }
    return cases;
}

/// The part of the outline that the case shows, without the line of the model and the indentation below it.
std::string outlineOf(const ImportedModel& imported, const Case& each) {
    const std::string_view shown = valueOf(each.options, "show", "packages");
    std::istringstream tree(imported.tree());
    std::string outline;
    std::string line;
    std::getline(tree, line);
    for (bool inTypes = false; std::getline(tree, line);) {
        line.erase(line.find_last_not_of(' ') + 1);
        const bool beginsType = line.starts_with("  type ") || line.starts_with("  base type ");
        inTypes = beginsType || (inTypes && line.starts_with("    "));
        if (shown == "all" || inTypes == (shown == "types")) {
            outline += line.substr(2) + "\n";
        }
    }
    return outline;
}

/// The file to import.
std::string fileOf(const Case& each) {
    if (const auto example = each.options.find("file"); example != each.options.end()) {
        std::ostringstream text;
        text << std::ifstream(PETAL_EXAMPLES "/" + example->second, std::ios::binary).rdbuf();
        return text.str();
    }
    const char* const view = each.options.contains("view") ? "" : "(object Class_Category \"Logical View\"\n";
    return std::string(petalHeader) + view + each.input;
}

std::vector<std::string> subjects() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(PETAL_CORPUS)) {
        if (entry.path().stem() != "README") {
            names.push_back(entry.path().stem());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Corpus : public testing::TestWithParam<std::string> {};

TEST_P(Corpus, IsImportedAsItsOutlinesSay) {
    const std::filesystem::path path = std::filesystem::path(PETAL_CORPUS) / (GetParam() + ".txt");
    const std::vector<Case> cases = casesIn(path);
    EXPECT_FALSE(cases.empty());
    for (const Case& each : cases) {
        SCOPED_TRACE(path.filename().string() + ": " + each.title);
        const std::string file = fileOf(each);
        const ImportedModel::Choices choices{.types = valueOf(each.options, "types", "C++"),
                                             .encoding = valueOf(each.options, "encoding", "windows-1252")};
        ImportedModel imported = ImportedModel::ofBytes(file, choices);
        const Steps steps(file);
        const ImportedModel watched =
            ImportedModel::ofBytes(file, choices); // takes another path through the dispatcher
        const bool showsSteps = valueOf(each.options, "show", "packages") == "steps";
        EXPECT_EQ(imported.failure, valueOf(each.options, "fails", ""));
        EXPECT_EQ(showsSteps ? steps.text() : outlineOf(imported, each), each.outline);
        EXPECT_EQ(watched.json(), imported.json());
        EXPECT_EQ(brokenInvariant(imported.model), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Subjects, Corpus, testing::ValuesIn(subjects()),
                         [](const auto& subject) { return subject.param; });

} // namespace
