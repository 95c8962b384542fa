#pragma once

#include "Folder.h"

/// How a shell command ended.
struct Ended {
    int status;         // of the shell; 128 and the signal's number when a signal ended the command
    std::string output; // what it left on standard output
    std::string errors; // and on standard error
};

/// A test that runs petal, "$petal" to its shell commands, in the folder of the test.
class Shell : public InFolder {
protected:
    /// `plugIn` is the path that petal is given in the environment; empty for the bridge that belongs to it.
    explicit Shell(std::string plugIn) : plugIn_(std::move(plugIn)) {}

    [[nodiscard]] Ended run(const std::string& command) const;

private:
    std::string plugIn_;
};
