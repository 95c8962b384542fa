#pragma once

#include "support/InFolder.h"

#include <initializer_list>
#include <vector>

/// How a shell command ended.
struct Ended {
    int status;         // of the shell; 128 and the signal's number when a signal ended the command
    std::string output; // what it left on standard output
    std::string errors; // and on standard error
};

/// A command that petal refuses.
struct Refusal {
    std::string command;
    int status;
    std::string_view errors; // a part of them
};

/// A test that runs petal, "$petal" to its shell commands, in the folder of the test.
class Shell : public InFolder {
protected:
    using Lines = std::vector<std::string>;

    /// `plugIn` is the path that petal is given in the environment; empty for the bridge that belongs to it.
    explicit Shell(std::string plugIn = "") : plugIn_(std::move(plugIn)) {}
    /// Keeps the documents among the files that petal has left.
    ~Shell() override;

    [[nodiscard]] Ended run(const std::string& command) const;
    /// Expects of each command that it ends so, writes nothing to standard output and changes no file. `start` is put
    /// before each command.
    void expectRefusals(const std::string& start, std::initializer_list<Refusal> refusals) const;

    /// What a report says of each file: "FILE STATE" and, if it has one, a reason.
    [[nodiscard]] Lines statesIn(std::string_view report) const;

private:
    std::string plugIn_;
};

/// petal with a bridge made for tests, which does what the model files say.
class FakeBridge : public Shell {
protected:
    FakeBridge() : Shell(PETAL_FAKE_PLUGIN) {}

    static constexpr const char* good = "package A\npackage B\n";
    static constexpr const char* outline = "model made by the fake\n  package A\n  package B\n";
};

/// Whether a text has a part; the failure shows the text.
inline testing::AssertionResult has(const std::string& text, std::string_view part) {
    return (text.find(part) != std::string::npos ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "\"" << part << "\" in:\n"
           << text;
}
