#include "diff/drawings.h"
#include "diff/writers.h"
#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/diff/Ignoring.h"
#include "petal/diff/Sides.h"
#include "petal/jobs/Console.h"
#include "petal/jobs/StopSignals.h"
#include "petal/output/Descriptor.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "text/escape.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace petal {

namespace {

/// The arguments that git gives to an external diff.
struct GitArgument {
    static constexpr std::size_t path = 0;
    static constexpr std::size_t oldFile = 1;
    static constexpr std::size_t newFile = 4;
    static constexpr std::size_t newPath = 7; // of a renamed file
};

Failure wrongCount(const std::string& text) {
    return {Outcome::wrongUsage, text, "Run 'petal diff --help'."};
}

std::array<Side, 2> sidesOf(const DiffRequest& request) {
    const std::vector<std::string>& models = request.models;
    if (request.isGit) {
        if (models.size() != 7 && models.size() != 9) {
            throw wrongCount("--git takes 1, 7 or 9 arguments, as git gives them, and not " +
                             std::to_string(models.size()));
        }
        const std::string& oldName = models[GitArgument::path];
        return {Side{models[GitArgument::oldFile], oldName},
                Side{models[GitArgument::newFile], models.size() == 9 ? models[GitArgument::newPath] : oldName}};
    }
    if (models.size() != 2) {
        throw wrongCount("a comparison takes two models, and not " + std::to_string(models.size()));
    }
    if (models[0] == "-" && models[1] == "-") {
        throw Failure(Outcome::wrongUsage, "standard input can be one of the two models only",
                      "Give the other one as a file.");
    }
    const auto nameOf = [](const std::string& path) { return path == "-" ? std::string("standard input") : path; };
    return {Side{models[0], nameOf(models[0])}, Side{models[1], nameOf(models[1])}};
}

diff::Renames renamesOf(const DiffRequest& request) {
    return request.renames == "content" ? diff::Renames::content
           : request.renames == "quid"  ? diff::Renames::quid
                                        : diff::Renames::no;
}

diff::Shown shownOf(const DiffRequest& request) {
    const auto isShown = [&](const char* word) { return std::ranges::count(request.shown, word) > 0; };
    return {.layout = isShown("layout"),
            .order = isShown("order"),
            .quids = isShown("quids"),
            .encoding = isShown("encoding"),
            .units = isShown("units")};
}

bool isColoured(const DiffRequest& request) {
    if (request.colour != "auto") {
        return request.colour == "always";
    }
    return !request.output && takesColours(STDOUT_FILENO);
}

/// The changes that end the command with status 3.
class Conditions {
public:
    explicit Conditions(const std::vector<std::string>& words) {
        for (const std::string& word : words) {
            isAny_ = isAny_ || word == "any";
            isBreaking_ = isBreaking_ || word == "breaking";
            if (word != "any" && word != "breaking") {
                rules_.push_back(ruleOrFail(word, "--fail-on"));
            }
        }
    }

    [[nodiscard]] bool areMet(const diff::Difference& difference) const {
        return std::ranges::any_of(difference.changes(), [this](const diff::Change& change) {
            return isAny_ || (isBreaking_ && diff::ruleOf(change.rule).weight == diff::Weight::breaking) ||
                   std::ranges::count(rules_, change.rule) > 0;
        });
    }

private:
    bool isAny_ = false;
    bool isBreaking_ = false;
    std::vector<diff::RuleId> rules_;
};

void printRules() {
    const auto padded = [](std::string_view word, std::size_t width) {
        return std::string(word) + std::string(width - std::min(word.size(), width - 2), ' ');
    };
    constexpr std::size_t ruleWidth = 35;
    constexpr std::size_t weightWidth = 13;
    std::string text;
    for (const diff::Rule& rule : diff::rules()) {
        text += padded(rule.name, ruleWidth) + padded(weightWord(rule.weight), weightWidth);
        text.append(rule.text) += '\n';
    }
    writeToStandardOutput(text);
}

void addDrawings(diff::Difference& difference, const std::array<Side, 2>& sides, const std::array<ReadSide, 2>& read) {
    if (read[0].drawings != nullptr && read[1].drawings != nullptr) {
        difference.addLayout(
            diff::compareDrawings({*read[0].drawings, sides[0].name}, {*read[1].drawings, sides[1].name}));
    } else {
        std::fputs("petal: diff: layout cannot be compared: JSON documents have none\n", stderr);
    }
}

void write(const diff::Report& report, const DiffRequest& request) {
    try {
        const std::unique_ptr<ModelOutput> output = ModelOutput::open(request.output);
        (request.isStatistic ? diff::writeStatistics : diff::findForm(request.form)->write)(report, *output);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(request.output), error);
    }
}

} // namespace

namespace {

Outcome compare(const DiffRequest& request) {
    if (request.listsRules) {
        printRules();
        return Outcome::success;
    }
    if (request.isStatistic && request.form != "text") {
        throw Failure(Outcome::wrongUsage, "--stat is a part of the form text only", "Leave out one of the two.");
    }
    const Conditions conditions(request.failOn);
    const Ignoring ignoring(request.ignoredRules, request.ignoreFiles);
    if (request.isGit && request.models.size() == 1) {
        writeToStandardOutput("* Unmerged path " + text::printableText(request.models[0]) + "\n");
        return Outcome::success;
    }
    const std::array<Side, 2> sides = sidesOf(request);
    const std::array<ReadSide, 2> read = readSides(sides, request);
    diff::Difference difference(read[0].model, read[1].model, renamesOf(request), shownOf(request));
    if (std::ranges::count(request.shown, "layout") > 0) {
        addDrawings(difference, sides, read);
    }
    ignoring.applyTo(difference);
    if (difference.matching().isByName && !request.quiet && !request.isGit && request.form != "text") {
        std::fputs("petal: diff: the models share hardly any quid; elements are matched by name\n", stderr);
    }
    write({.difference = difference,
           .oldFile = sides[0].name,
           .newFile = sides[1].name,
           .isOldModelFile = read[0].isModelFile,
           .isNewModelFile = read[1].isModelFile,
           .isColoured = isColoured(request)},
          request);
    return conditions.areMet(difference) ? Outcome::checkTripped : Outcome::success;
}

} // namespace

Outcome diffModels(const DiffRequest& request) {
    try {
        return compare(request);
    } catch (const Stopped& stopped) {
        std::signal(stopped.signal, SIG_DFL); // everything has been cleaned up
        static_cast<void>(std::raise(stopped.signal));
        return Outcome::unexpected;
    }
}

} // namespace petal
