#include "interface/interfaceFiles.h"
#include "interface/optionForms.h"

namespace petal {

namespace {

std::string quoted(const std::string& text) {
    return "'" + escaped(text, "'", "'\\'") + "'";
}

/// What completes an option's value, or a positional argument.
std::string action(const OptionText& option) {
    const std::vector<std::string> words = choices(option);
    if (!words.empty()) {
        return ":value:(" + joined(words, " ") + ")";
    }
    return ":" + option.value + ":" + (takesPath(option) ? "_files" : "");
}

std::string argumentsOf(const CommandText& command) {
    std::vector<std::string> lines{"_arguments"};
    for (const OptionText& option : command.options) {
        const std::string text = "[" + escaped(shortDescription(option), "[]:\\", "\\") + "]";
        const std::string value = option.value.empty() ? "" : action(option);
        for (const std::string& name : option.names) {
            lines.push_back(quoted(std::string("*").append(name).append(text).append(value)));
        }
        if (option.names.empty()) {
            lines.push_back(option.value.empty() ? "'*:file:_files'" : quoted("*" + action(option)));
        }
    }
    return joined(lines, " \\\n            ");
}

} // namespace

std::string zshCompletion() {
    std::string described;
    std::string cases;
    std::string own;
    for (const CommandText& command : commandTexts()) {
        if (command.name.empty()) {
            own = argumentsOf(command);
            continue;
        }
        const std::size_t blank = command.name.find(' ');
        const std::string first = command.name.substr(0, blank);
        described += "        " + quoted(first + ":" + escaped(command.description, ":\\", "\\")) + "\n";
        cases += "    " + first + ")\n        ";
        cases += blank != std::string::npos ? "if (( CURRENT == 3 )); then compadd " + command.name.substr(blank + 1) +
                                                  "; return; fi\n        "
                                            : "";
        cases += argumentsOf(command) + " ;;\n";
    }
    return "#compdef petal\n# Completion for zsh, made from the command line's description.\n\n_petal() {\n"
           "    local -a commands=(\n" +
           described + "    )\n    if (( CURRENT == 2 )); then\n        _describe command commands\n        " + own +
           "\n        return\n    fi\n    case $words[2] in\n" + cases + "    esac\n}\n_petal \"$@\"\n";
}

} // namespace petal
