#include "export/exporters.h"
#include "interface/interfaceFiles.h"
#include "interface/optionForms.h"
#include "petal/exitStatus.h"

namespace petal {

namespace {

constexpr const char* head = R"(.\" Made from the command line's description.
.TH PETAL 1 "" petal "User commands"
.SH NAME
petal \- import Rose model files
)";

constexpr const char* description = R"(.SH DESCRIPTION
.B petal
reads the model files of Rose 4.0 (text that begins with "(object Petal") through an import bridge and writes what it
read as JSON or as an outline.
.PP
A single file is imported in petal's own process, and the model goes to standard output unless
.B \-o
names a file. Several files, and folders, are imported in other processes, so that whatever happens in one
costs that file only;
.B \-o
then names the folder that the models are written to.
)";

constexpr const char* tail = R"(.SH ENVIRONMENT
.TP
.B PETAL_PLUGIN
The bridge's library, in place of the one that belongs to this program.
.TP
.B NO_COLOR
When it is set and not empty, no colours on a terminal.
.SH EXAMPLES
.nf
petal import shop.mdl \-f tree
petal import shop.mdl \-o shop.json \-O places=true
petal import archive \-o models \-j 4 \-\-timeout 60 \-\-report report.json
find . \-name '*.mdl' \-print0 | petal import \-\-files\-from \- \-0 \-o models \-\-resume
petal report merge part1.json part2.json \-o whole.json
.fi
)";

std::string printed(const std::string& text) {
    return escaped(text, "\\-", "\\");
}

/// Lines that begin with a blank stay apart.
std::string paragraph(const std::string& text) {
    std::string lines;
    for (const char character : printed(text)) {
        lines += lines.ends_with('\n') && character == ' ' ? ".br\n" : "";
        lines += !lines.ends_with('\n') || character != ' ' ? std::string(1, character) : "";
    }
    return lines + "\n";
}

/// "FILE ..." for an argument without a name.
std::string argument(const OptionText& option) {
    return "\\fI" + (option.value.empty() ? "FILE" : printed(option.value)) + "\\fR" +
           (option.isRepeated ? " ..." : "");
}

std::string optionEntry(const OptionText& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names) {
        names.push_back("\\fB" + printed(name) + "\\fR");
    }
    const std::string value = option.value.empty() ? "" : " \\fI" + printed(option.value) + "\\fR";
    return ".TP\n" + (names.empty() ? argument(option) : joined(names, ", ") + value) + "\n" +
           paragraph(option.description);
}

std::string formats() {
    std::string text = ".SH FORMATS\n";
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        text += ".SS " + printed(std::string(exporter.format)) + "\n" + paragraph(std::string(exporter.description));
        for (const exporter::Option& option : exporter.options) {
            text += ".TP\n\\fB\\-O " + printed(std::string(option.name)) + "\\fR=\\fI" +
                    printed(std::string(option.values)) + "\\fR\n" +
                    paragraph(std::string(option.description) +
                              (option.isRepeatable ? "; may be given several times" : "") +
                              (option.byDefault.empty() ? "" : " (default: " + std::string(option.byDefault) + ")"));
        }
    }
    return text;
}

std::string statuses() {
    std::string text = ".SH \"EXIT STATUS\"\n";
    for (const ExitStatus& status : exitStatuses()) {
        text += ".TP\n.B " + std::to_string(status.number) + "\n" + paragraph(status.meaning);
    }
    return text;
}

} // namespace

std::string manualPage() {
    std::string synopsis = ".SH SYNOPSIS\n";
    std::string options;
    for (const CommandText& command : commandTexts()) {
        const std::string name = command.name.empty() ? "petal" : "petal " + command.name;
        std::string usage = ".B " + name + "\n[\\fIOPTIONS\\fR]";
        options += ".SS " + printed(name) + "\n" + paragraph(command.description);
        for (const OptionText& option : command.options) {
            usage += option.names.empty() ? " [" + argument(option) + "]" : "";
            options += optionEntry(option);
        }
        synopsis += usage + "\n.br\n";
    }
    return head + synopsis + description + ".SH COMMANDS\n" + options + formats() + statuses() + tail;
}

} // namespace petal
