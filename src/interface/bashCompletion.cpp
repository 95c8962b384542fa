#include "interface/interfaceFiles.h"
#include "interface/optionForms.h"

namespace petal {

namespace {

constexpr const char* head = R"(# Completion for bash, made from the command line's description.

_petal() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command=""
    [ "$COMP_CWORD" -gt 1 ] && command=${COMP_WORDS[1]}
    [ "$command" = report ] && [ "$COMP_CWORD" -gt 2 ] && command="report ${COMP_WORDS[2]}"
    # bash takes "-O NAME=VALUE" for three words
    if [ "$current" = "=" ]; then
        previous="$previous=" current=""
    elif [ "$previous" = "=" ]; then
        previous="${COMP_WORDS[COMP_CWORD-2]}="
    fi
    local words=""
    case "$command:$previous" in
)";

constexpr const char* middle = R"(    *)
        case "$command:$current" in
)";

// Where nothing is suggested bash itself completes paths.
constexpr const char* tail = R"(        esac ;;
    esac
    # shellcheck disable=SC2207 # the words hold no blanks
    COMPREPLY=($(compgen -W "$words" -- "$current"))
    case "${COMPREPLY[0]-}" in *[=.]) compopt -o nospace 2>/dev/null ;; esac
}
complete -o default -F _petal petal
)";

std::string assignment(const std::string& patterns, const std::string& words) {
    return patterns + ") words=\"" + words + "\" ;;\n";
}

/// The values that an option can have.
std::string values(const CommandText& command) {
    std::string cases;
    std::string settings;
    for (const OptionText& option : command.options) {
        if (!option.value.empty()) {
            std::vector<std::string> patterns;
            for (const std::string& name : option.names) {
                patterns.push_back("'" + command.name + ":" + name + "'");
            }
            if (patterns.empty()) { // the command's argument, right behind it
                patterns.push_back("'" + command.name + ":" + command.name + "'");
            }
            std::vector<std::string> words = choices(option);
            if (setsFormatOption(option)) {
                words.clear();
                for (const FormatOption& known : formatOptions()) {
                    words.push_back(known.name + (known.name.ends_with('.') ? "" : "="));
                    settings +=
                        "    " + assignment("'" + command.name + ":" + known.name + "='", joined(known.values, " "));
                }
            }
            cases += "    " + assignment(joined(patterns, "|"), joined(words, " "));
        }
    }
    return cases + settings;
}

std::string names(const CommandText& command) {
    std::vector<std::string> words;
    for (const OptionText& option : command.options) {
        words.insert(words.end(), option.names.begin(), option.names.end());
    }
    return "        " + assignment("'" + command.name + ":-'*", joined(words, " "));
}

} // namespace

std::string bashCompletion() {
    const std::vector<CommandText> commands = commandTexts();
    std::string text = head;
    std::vector<std::string> first;
    for (const CommandText& command : commands) {
        text += values(command);
        if (const std::string word = command.name.substr(0, command.name.find(' ')); !word.empty()) {
            first.push_back(word);
        }
    }
    text += middle;
    for (const CommandText& command : commands) {
        text += names(command);
        if (const std::size_t blank = command.name.find(' '); blank != std::string::npos) {
            text +=
                "        " + assignment("'" + command.name.substr(0, blank) + ":'*", command.name.substr(blank + 1));
        }
    }
    return text + "        " + assignment("':'*", joined(first, " ")) + tail;
}

} // namespace petal
