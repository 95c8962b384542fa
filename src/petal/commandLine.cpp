#include "petal/commandLine.h"

#include "export/exporters.h"
#include "host/log/Severity.h"
#include "petal/Failure.h"
#include "petal/PlugIn.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <vector>

namespace petal {

namespace {

std::string footer() {
    std::string text = "Environment:\n  ";
    text += PlugIn::pathVariable;
    text += "  the bridge's library, in place of the one that belongs to this program\n\nExit status:\n";
    for (const ExitStatus& status : exitStatuses()) {
        text += "  " + std::to_string(status.number) + "  " + status.meaning + "\n";
    }
    return text;
}

std::vector<std::string> formats() {
    std::vector<std::string> names;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        names.emplace_back(exporter.format);
    }
    return names;
}

std::string formatDescription() {
    std::string text = "What to write; unless given, tree on a terminal and json otherwise:";
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        text += "\n  " + std::string(exporter.format) + ": " + std::string(exporter.description);
    }
    return text;
}

std::vector<std::string> severities() {
    std::vector<std::string> words;
    for (int level = 1; severityWord(level) != nullptr; ++level) {
        words.emplace_back(severityWord(level));
    }
    return words;
}

/// Lets an option take only these values, which its description names.
CLI::Validator oneOf(const std::vector<std::string>& values) {
    return CLI::IsMember(values).description("");
}

void describeImport(CLI::App& import, ImportRequest& request) {
    import.add_option("FILE", request.file, "The model file")->required()->type_name("");
    import.add_option("--types", request.types, "What declared types are mapped to; see 'petal options'")
        ->type_name("NAME");
    import
        .add_option("--encoding", request.encoding,
                    "The encoding of the file's texts; see 'petal options'. With auto the one\n"
                    "that the charSet in the file's header stands for, else the bridge's default")
        ->type_name("NAME")
        ->capture_default_str();
    import.add_option("--format", request.format, formatDescription())->check(oneOf(formats()))->type_name("FORMAT");
    import
        .add_option("-o", request.output,
                    "Where to write the model; unless given, or with -, standard output.\n"
                    "A regular file is replaced as a whole once the model is written")
        ->type_name("FILE");
    import
        .add_option("--log-level", request.logLevel,
                    "The least severe events to report: FATAL, ERROR, WARNING, STATUS or DEBUG")
        ->transform(CLI::IsMember(severities(), CLI::ignore_case).description(""))
        ->type_name("LEVEL")
        ->capture_default_str();
    import.add_option("--log-format", request.logFormat, "text, or json for a JSON object a line")
        ->check(oneOf({"text", "json"}))
        ->type_name("FORMAT")
        ->capture_default_str();
    import.add_option("--log", request.log, "Where to write the log; unless given, or with -, standard error")
        ->type_name("FILE");
}

} // namespace

Request parseCommandLine(int argc, const char* const* argv) {
    Request request;
    bool versionAsked = false;
    CLI::App app("Imports Rose model files.", "petal");
    app.require_subcommand(0, 1);
    app.add_flag("--version", versionAsked, "Print the versions of petal and of the bridge");
    CLI::App* import = app.add_subcommand("import", "Import a model file and write the model");
    const CLI::App* options = app.add_subcommand("options", "Print the bridge's options, their values and defaults");
    const CLI::App* specification = app.add_subcommand("spec", "Print what the bridge says about itself");
    describeImport(*import, request.import);
    app.footer(footer() + "\n'petal import --help' tells about the options of an import.");
    import->footer(footer());

    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    std::ranges::reverse(arguments); // the order in which they are taken off
    try {
        app.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        request.helpText = app.help();
        return request;
    } catch (const CLI::ParseError& error) {
        throw Failure(Outcome::wrongUsage, error.what(), "Run 'petal --help' or 'petal import --help'.");
    }
    if (versionAsked) {
        request.command = Command::version;
    } else if (import->parsed()) {
        request.command = Command::import;
    } else if (options->parsed()) {
        request.command = Command::options;
    } else if (specification->parsed()) {
        request.command = Command::specification;
    } else {
        throw Failure(Outcome::wrongUsage, "there is nothing to do", "Run 'petal --help' to see the commands.");
    }
    return request;
}

} // namespace petal
