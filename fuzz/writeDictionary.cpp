// Prints the words that a fuzzer puts together, a quoted one on each line: "keywords" those of model files, taken
// from the rule table, "arguments" those of the command line, taken from its description, and "report" those of
// reports.

#include "host/log/Severity.h"
#include "host/options/BLIB.h"
#include "petal/commandLine.h"
#include "petal/report/reportForm.h"
#include "require.h"
#include "scanner/RuleTable.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Words = std::vector<std::string>;

/// What stands around keywords, and values that matter to one of them.
constexpr std::string_view notationWords[] = {"\"",
                                              "\t",
                                              "\n",
                                              "\n|",
                                              ")",
                                              "(object ",
                                              "(list ",
                                              "(value ",
                                              " \"TRUE\"",
                                              " TRUE",
                                              "FALSE",
                                              " \"",
                                              "\"\n",
                                              " @1",
                                              "\"1\"",
                                              "\"2\"",
                                              "::",
                                              "Logical View::",
                                              " \"A\"",
                                              " \"B\"",
                                              "$UNNAMED$0",
                                              "{a,b=1}",
                                              "{",
                                              "Public",
                                              "Private",
                                              "Protected",
                                              "Implementation",
                                              "By Value",
                                              "0..*",
                                              "1..n",
                                              "Persistent",
                                              "Abstract",
                                              "type \"int",
                                              "char[80]",
                                              "unsigned long",
                                              "const A&",
                                              "A*",
                                              "VARCHAR2(",
                                              "NUMBER(9,2)",
                                              "(object Petal",
                                              "version ",
                                              "charSet ",
                                              "_written ",
                                              "\"\\\"",
                                              "(1, 2)",
                                              "Interface",
                                              "Enumeration",
                                              "location ",
                                              "is_unit TRUE is_loaded FALSE",
                                              "file_name \"$CURDIR\\\\a.cat\"",
                                              "file_name \"b.cat\"",
                                              "charSet 134",
                                              "\n----\n"};

/// What the description of the command line does not tell: names of files, and values that help has in sentences.
constexpr std::string_view argumentWords[] = {"MODEL",    "SPLIT",       "REPORT", "C++", "auto",  "-",    "--",
                                              "require",  "warn",        "skip",   "all", "named", "loss", "warning",
                                              "encoding", "/dev/stdout", "X=none", "2",   "64M"};

Words keywords() {
    Words words(std::begin(notationWords), std::end(notationWords));
    for (const rose::Pattern& pattern : rose::patterns) {
        words.emplace_back(pattern.literal.first);
        if (!pattern.literal.second.empty()) {
            words.emplace_back(pattern.literal.second);
        }
    }
    return words;
}

/// Adds the parts of a text that stand between separators, each as a line.
void addLines(const std::string& text, char separator, Words& words) {
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, separator);) {
        words.push_back(part + "\n");
    }
}

Words arguments() {
    Words words{"="};
    for (const std::string_view word : argumentWords) {
        words.push_back(std::string(word) + "\n");
    }
    for (const petal::CommandText& command : petal::commandTexts()) {
        addLines(command.name, ' ', words);
        for (const petal::OptionText& option : command.options) {
            for (const std::string& name : option.names) {
                words.push_back(name + "\n");
            }
            if (option.value.find('|') != std::string::npos) {
                addLines(option.value, '|', words);
            }
        }
    }
    const BLIB literals;
    for (KelTextLiteral* const* literal = literals.listAllLiterals(); *literal != nullptr; ++literal) {
        words.emplace_back((*literal)->getIdentifier().view());
    }
    std::sort(words.begin(), words.end()); // commands share options
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

template <class Members>
void addNames(const Members& members, Words& words) {
    for (const auto& member : members) {
        words.push_back(",\"" + std::string(member.name) + "\":");
    }
}

Words reportWords() {
    using petal::FileState;
    Words words{"{\"format\":\"" + std::string(petal::reportFormat) + "\",\"formatVersion\":1,\"files\":[",
                "{\"file\":\"a\"",
                ",\"state\":",
                ",\"events\":{",
                "},",
                "}]}",
                "\"\\u0000\"",
                "\"\\u0085\\ud83d\\ude00\"",
                "9223372036854775807",
                "2147483648"};
    addNames(petal::textMembers, words);
    addNames(petal::statusMembers, words);
    addNames(petal::countMembers, words);
    for (const FileState state : {FileState::imported, FileState::upToDate, FileState::failed, FileState::notStarted}) {
        words.push_back("\"" + std::string(petal::stateWord(state)) + "\"");
    }
    for (int level = 1; severityWord(level) != nullptr; ++level) {
        words.push_back("\"" + std::string(severityWord(level)) + "\":");
    }
    return words;
}

struct Kind {
    std::string_view name;
    Words (*words)();
};
constexpr Kind kinds[] = {{"keywords", keywords}, {"arguments", arguments}, {"report", reportWords}};

/// The word as dictionaries have it: quotes, backslashes and what is not printable in hexadecimal digits.
std::string quoted(const std::string& word) {
    std::string text = "\"";
    for (const char byte : word) {
        char escaped[8];
        const bool isPlain = ' ' <= byte && byte <= '~' && byte != '"' && byte != '\\';
        std::snprintf(escaped, sizeof escaped, isPlain ? "%c" : "\\x%02X", static_cast<unsigned char>(byte));
        text += escaped;
    }
    return text + "\"";
}

} // namespace

int main(int argc, char** argv) {
    const auto kind = std::ranges::find(kinds, std::string_view(argc == 2 ? argv[1] : ""), &Kind::name);
    fuzz::require(kind != std::end(kinds), "say which words: keywords, arguments or report");
    for (const std::string& word : kind->words()) {
        std::puts(quoted(word).c_str());
    }
    return 0;
}
