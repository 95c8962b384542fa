#pragma once

#include <optional>
#include <string>

namespace petal {

enum class Command { help, version, options, specification, import };

/// What `petal import` is to do. Texts are the bytes that the shell gave.
struct ImportRequest {
    std::string file;
    std::optional<std::string> types;
    std::string encoding = "auto";
    std::optional<std::string> format; // one of the exporters; unset: "tree" on a terminal, else "json"
    std::optional<std::string> output; // unset or "-": standard output
    std::string logLevel = "WARNING";  // a word of Severity.h
    std::string logFormat = "text";    // or "json"
    std::optional<std::string> log;    // unset or "-": standard error
};

struct Request {
    Command command = Command::help;
    std::string helpText; // of the command `help`
    ImportRequest import;
};

} // namespace petal
