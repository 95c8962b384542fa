#include "interface/interfaceFiles.h"
#include "interface/optionForms.h"

namespace petal {

namespace {

std::string quoted(const std::string& text) {
    return "'" + escaped(text, "'\\", "\\") + "'";
}

/// The condition under which what follows belongs to the command.
std::string condition(const std::string& command) {
    return quoted(command.empty() ? "__fish_use_subcommand"
                                  : "__fish_seen_subcommand_from " + command.substr(0, command.find(' ')));
}

std::string line(const std::string& command, const std::string& rest) {
    return "complete -c petal -n " + condition(command) + rest + "\n";
}

std::string optionLine(const std::string& command, const OptionText& option) {
    std::string rest;
    for (const std::string& name : option.names) {
        rest += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (!option.value.empty()) {
        rest += takesPath(option) ? " -r -F" : " -x";
        const std::vector<std::string> words = choices(option);
        rest += words.empty() ? "" : " -a " + quoted(joined(words, " "));
    }
    return line(command, rest + " -d " + quoted(shortDescription(option)));
}

/// Offers what may follow a command, until it does.
std::string subcommandLine(const std::string& command, const std::string& subcommand) {
    return "complete -c petal -n '__fish_seen_subcommand_from " + command + "; and not __fish_seen_subcommand_from " +
           subcommand + "' -f -a " + subcommand + "\n";
}

} // namespace

std::string fishCompletion() {
    std::string text = "# Completion for fish, made from the command line's description.\n\n";
    for (const CommandText& command : commandTexts()) {
        if (!command.name.empty()) {
            const std::size_t blank = command.name.find(' ');
            text += line("", " -f -a " + command.name.substr(0, blank) + " -d " + quoted(command.description));
            if (blank != std::string::npos) {
                text += subcommandLine(command.name.substr(0, blank), command.name.substr(blank + 1));
            }
        }
        for (const OptionText& option : command.options) {
            text += !option.names.empty()  ? optionLine(command.name, option)
                    : option.value.empty() ? ""
                                           : line(command.name, " -f -a " + quoted(joined(choices(option), " ")));
        }
    }
    return text;
}

} // namespace petal
