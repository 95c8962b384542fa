// Prints the words that a fuzzer puts together, a quoted one on each line: "keywords" those of model files, taken
// from the rule table, and "arguments" those of the command line.

#include "export/exporters.h"
#include "host/options/BLIB.h"
#include "require.h"
#include "scanner/RuleTable.h"

#include <cstdio>
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
                                              "location "};

constexpr std::string_view argumentWords[] = {
    "import\n",  "info\n",   "options\n",     "spec\n",  "MODEL\n",        "--version\n", "--help\n",      "-h\n",
    "--types\n", "C++\n",    "--encoding\n",  "auto\n",  "--format\n",     "-o\n",        "-\n",           "--\n",
    "--log\n",   "--json\n", "--log-level\n", "DEBUG\n", "--log-format\n", "text\n",      "/dev/stdout\n", "="};

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

Words arguments() {
    Words words(std::begin(argumentWords), std::end(argumentWords));
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        words.emplace_back(exporter.format);
    }
    const BLIB literals;
    for (KelTextLiteral* const* literal = literals.listAllLiterals(); *literal != nullptr; ++literal) {
        words.emplace_back((*literal)->getIdentifier().view());
    }
    return words;
}

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
    const std::string_view kind = argc == 2 ? argv[1] : "";
    fuzz::require(kind == "keywords" || kind == "arguments", "say which words: keywords or arguments");
    for (const std::string& word : kind == "keywords" ? keywords() : arguments()) {
        std::puts(quoted(word).c_str());
    }
    return 0;
}
