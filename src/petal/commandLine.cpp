#include "petal/commandLine.h"

#include "export/exporters.h"
#include "host/log/Severity.h"
#include "petal/Failure.h"
#include "petal/diff/diffOptions.h"
#include "petal/import/PlugIn.h"
#include "petal/ledger/LedgerReport.h"
#include "petal/schema/schemas.h"
#include "petal/units/unitOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace petal {

namespace {

constexpr int mostJobs = 1024;
constexpr double shortestTime = 0.001; // seconds
constexpr double longestTime = 1e9;

std::string footer() {
    std::string text = "Environment:\n  ";
    text += PlugIn::pathVariable;
    text += "  the bridge's library, in place of the one that belongs to this program\n"
            "  NO_COLOR  when it is set and not empty, no colours on a terminal\n\nExit status:\n";
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
    std::string text = "Output format; by default it follows from the ending of the name given with -o,\n"
                       "else it is tree on a terminal and json otherwise:";
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        text += "\n  " + std::string(exporter.format) + ": " + std::string(exporter.description);
        for (const std::string_view ending : exporter.endings) {
            text += (ending == exporter.endings.front() ? " (" : ", ") + std::string(ending);
        }
        text += exporter.endings.empty() ? "" : ")";
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

/// A name for the value of such an option: "json|tree".
std::string choiceOf(const std::vector<std::string>& values) {
    return CLI::detail::join(values, "|");
}

/// Lets an option take a span of time. Its comparisons also refuse values that are not numbers (NaN).
CLI::Validator timeSpan() {
    return CLI::Validator(
        [](const std::string& text) {
            double seconds = 0;
            const bool isOne =
                CLI::detail::lexical_cast(text, seconds) && seconds >= shortestTime && seconds <= longestTime;
            return isOne ? std::string() : "'" + text + "' is not a number of seconds from 0.001 to 1e9";
        },
        "");
}

/// A prefix for arguments in brackets, which an option with many values would split. No argument contains a NUL.
constexpr char asItIs = '\0';

std::string marked(const std::string& argument) {
    return argument.starts_with('[') && argument.ends_with(']') ? asItIs + argument : argument;
}

void takeMarksOff(CLI::App& app) {
    const CLI::Validator unmark(
        [](std::string& argument) {
            argument.erase(0, argument.starts_with(asItIs) ? 1 : 0);
            return std::string();
        },
        "");
    for (CLI::Option* option : app.get_options()) {
        option->transform(unmark);
    }
    for (CLI::App* command : app.get_subcommands({})) {
        takeMarksOff(*command);
    }
}

/// Lets an option take only these values. Its description must name them: the check adds no text.
CLI::Validator oneOf(const std::vector<std::string>& values) {
    return CLI::IsMember(values).description("");
}

/// How the texts and types of models are read.
void describeReading(CLI::App& command, ImportRequest& request) {
    command
        .add_option("--types", request.types,
                    "Map declared types to the types of this system: cpp, oracle, or another name that\n"
                    "'petal options' prints")
        ->type_name("NAME");
    command
        .add_option("--encoding", request.encoding,
                    "Encoding of the file's texts; 'petal options' prints the names. With auto it is the\n"
                    "one that the charSet in the file's header means, else the bridge's default")
        ->type_name("NAME")
        ->capture_default_str();
}

void describeImport(CLI::App& command, ImportRequest& request) {
    describeReading(command, request);
    command.add_option("-f,--format", request.format, formatDescription())
        ->check(oneOf(formats()))
        ->type_name(choiceOf(formats()));
    command
        .add_option("-O", request.formatOptions,
                    "Set an option of the format; may be given several times. 'petal formats FORMAT'\n"
                    "lists the options and their values")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command
        .add_option("-o", request.outputs,
                    "Output file (default: standard output; - for standard output). An existing regular\n"
                    "file is replaced as a whole once the model is written. May be given several times,\n"
                    "with names of different endings. With several models: the output folder, which\n"
                    "mirrors the input paths")
        ->type_name("FILE")
        ->allow_extra_args(false);
    command.add_option("--log-level", request.logLevel, "Report events of this severity and above")
        ->transform(CLI::IsMember(severities(), CLI::ignore_case).description(""))
        ->type_name(choiceOf(severities()))
        ->capture_default_str();
    command
        .add_option("--log-format", request.logFormat, "Write each log event as a line of text, or as a JSON object")
        ->check(oneOf({"text", "json"}))
        ->type_name("text|json")
        ->capture_default_str();
    command.add_option("--log", request.log, "Log file (default: standard error; - for standard error)")
        ->type_name("FILE");
    describeUnitOptions(command, request.units);
    describeLedgerOptions(command, request);
}

/// Names the files to import, and limits the imports.
void describeSources(CLI::App& command, JobsRequest& request) {
    CLI::Option* files =
        command.add_option("FILE", request.inputs, "Model files, and folders to search for files named *.mdl")
            ->type_name("");
    CLI::Option* list =
        command.add_option("--files-from", request.filesFrom,
                           "Read more files and folders from a list, one per line; - for standard input");
    list->type_name("FILE");
    command
        .add_flag("-0,--null", request.nulSeparated, "The names in that list are separated by NUL, not by line ends")
        ->needs(list);
    command.add_option("-j,--jobs", request.parallel, "Import up to N files in parallel")
        ->check(CLI::Range(1, mostJobs).description(""))
        ->type_name("N")
        ->capture_default_str();
    command.add_option("--timeout", request.timeout, "Stop the import of a file after this time")
        ->check(timeSpan())
        ->type_name("SECONDS");
    command
        .add_option("--max-memory", request.maxMemory, "Limit the memory of the import of a file, such as 500M or 2G")
        ->transform(CLI::AsSizeValue(false).description(""))
        ->type_name("SIZE");
    command.callback([files, list] {
        if (files->empty() && list->empty()) {
            throw CLI::RequiredError("FILE");
        }
    });
}

void describeJobs(CLI::App& command, JobsRequest& request) {
    describeSources(command, request);
    command
        .add_flag("--in-process", request.inProcess,
                  "Import a single file in petal's process, also with --report. This is the default\n"
                  "without --timeout, --max-memory and --report")
        ->excludes(command.get_option("--timeout"))
        ->excludes(command.get_option("--max-memory"));
    CLI::Option* goOn = command.add_flag("--keep-going")->description("Continue after a file has failed (the default)");
    command.add_flag("--fail-fast", request.failFast, "Stop at the first file that fails, and keep nothing after it")
        ->excludes(goOn);
    command.add_flag("--resume", request.resume, "Skip files whose output is complete and newer than the file");
    command.add_flag("-q,--quiet", request.quiet,
                     "Print no progress, no final table and no summary of imported, changed and dropped\n"
                     "elements");
    command.add_option("--report", request.report, "Write the result of each file to this file, as JSON")
        ->type_name("FILE");
}

void describeMerge(CLI::App& merge, MergeRequest& request) {
    merge.add_option("FILE", request.reports, "Reports")->required()->type_name("");
    merge.add_option("-o", request.output, "Output file (default: standard output; - for standard output)")
        ->type_name("FILE");
}

void describeInfo(CLI::App& info, InfoRequest& request) {
    info.add_option("FILE", request.files, "Model files, or - for standard input")->required()->type_name("");
    info.add_flag("--json", request.asJson, "Print a JSON list with an object for each file");
}

void describeUnits(CLI::App& units, UnitsRequest& request) {
    units.add_option("FILE", request.files, "Model files")->required()->type_name("");
    units.add_flag("--json", request.asJson, "Print a JSON object with the units of all files");
    describeUnitOptions(units, request.units);
}

void describeFormats(CLI::App& formatsCommand, FormatsRequest& request) {
    formatsCommand.add_option("FORMAT", request.format, "The format whose options to print")
        ->check(oneOf(formats()))
        ->type_name(choiceOf(formats()));
    formatsCommand.add_flag("--json", request.asJson, "Print a JSON object with all formats, or the one named");
}

std::vector<std::string> schemaNames() {
    std::vector<std::string> names;
    for (const text::Embedded& schema : schemas()) {
        names.emplace_back(schema.name);
    }
    return names;
}

void describeSchema(CLI::App& schema, SchemaRequest& request) {
    schema.add_option("NAME", request.name, "The form whose schema to print")
        ->required()
        ->check(oneOf(schemaNames()))
        ->type_name(choiceOf(schemaNames()));
}

void describeTextconv(CLI::App& textconv, TextconvRequest& request) {
    textconv.add_option("FILE", request.file, "A model file")->required()->type_name("");
}

void describeDraw(CLI::App& draw, DrawRequest& request) {
    draw.add_option("FILE", request.inputs, "Model files, and folders to search for files named *.mdl")
        ->required()
        ->type_name("");
    CLI::Option* list = draw.add_flag("--list", request.lists, "Print the diagrams: kind, name, number of items");
    draw.add_flag("--json", request.asJson, "With --list: print a JSON list with an object for each diagram")
        ->needs(list);
    draw.add_option("--diagram", request.diagrams,
                    "Draw only the diagrams of this name, alone or behind its packages (A::B::Main); may be\n"
                    "given several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    draw.add_option("-o", request.output,
                    "A file for one picture, whose name ends in .svg (default: standard output), else the\n"
                    "folder for the pictures, which go below the names of their packages. For draw.io the\n"
                    "file with all diagrams. With several models: the folder, which mirrors the input paths")
        ->type_name("FILE");
    draw.add_option("--as", request.writer, "Draw SVG pictures, or a file for draw.io with a page for each diagram")
        ->check(oneOf({"svg", "drawio"}))
        ->type_name("svg|drawio")
        ->capture_default_str();
    draw.add_option("-O", request.options, "theme=file|plain: the colours of the file (default), or black on white")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    draw.add_option("-j,--jobs", request.parallel, "Draw up to N files in parallel")
        ->check(CLI::Range(1, mostJobs).description(""))
        ->type_name("N")
        ->capture_default_str();
    draw.add_flag("-q,--quiet", request.quiet, "Print nothing but failures");
    describeUnitOptions(draw, request.units);
}

/// Reads "K/N", K from 1 to N.
void readPart(std::string_view text, CatalogRequest& request) {
    const char* const end = text.data() + text.size();
    const auto part = std::from_chars(text.data(), end, request.part);
    const bool hasSlash = part.ec == std::errc() && part.ptr != end && *part.ptr == '/';
    const auto parts = hasSlash ? std::from_chars(part.ptr + 1, end, request.parts) : part;
    if (!hasSlash || parts.ec != std::errc() || parts.ptr != end || request.part == 0 || request.part > request.parts) {
        throw CLI::ValidationError("--part", "'" + std::string(text) + "' is not K/N with K from 1 to N, such as 2/8");
    }
}

void describeCatalog(CLI::App& catalog, CatalogRequest& request) {
    describeSources(catalog, request.jobs);
    describeReading(catalog, request.import);
    describeUnitOptions(catalog, request.import.units);
    CLI::Option* output =
        catalog.add_option("-o", request.output,
                           "The catalogue: a file of SQLite or, as postgresql://... or WORD=VALUE..., a database of\n"
                           "PostgreSQL. If it exists, it is brought up to date: only models that have changed are\n"
                           "read, and those that are gone are dropped");
    output->type_name("FILE|DATABASE");
    catalog
        .add_option("--source", request.source,
                    "How much of the files as they stand is kept: nothing; all objects, with the properties\n"
                    "that the model has no place for; or all properties, too")
        ->check(oneOf({"none", "objects", "all"}))
        ->type_name("none|objects|all")
        ->capture_default_str();
    catalog.add_flag("-q,--quiet", request.jobs.quiet, "Print no progress and no summary");
    CLI::Option* part =
        catalog
            .add_option_function<std::string>(
                "--part", [&request](const std::string& text) { readPart(text, request); },
                "Put only the K-th of N parts of the models there, so that several machines share the work")
            ->type_name("K/N");
    CLI::Option* merge =
        catalog.add_flag("--merge", request.isMerge, "Put the catalogues FILE..., such as parts, together into one")
            ->needs(output)
            ->excludes(part)
            ->excludes(catalog.get_option("--files-from"));
    CLI::Option* question =
        catalog
            .add_option("--ask", request.question,
                        "Print the answer to a question of the guide of the catalogue FILE; the table\n"
                        "guide lists them, and so does --ask guide")
            ->type_name("NAME")
            ->excludes(output)
            ->excludes(merge);
    CLI::Option* json =
        catalog.add_flag("--json", request.asJson, "With --ask: print a JSON list with an object for each row")
            ->needs(question);
    catalog
        .add_flag("--csv", request.asCsv, "With --ask: print a line of values for each row, with commas between them")
        ->needs(question)
        ->excludes(json);
}

struct CommandRow {
    std::string_view name;
    std::string_view description;
    Command command;
    bool hasFooter;
    void (*describe)(CLI::App& app, Request& request); // null: it takes nothing
};

constexpr std::array commandRows{
    CommandRow{"import", "Import model files and write the models", Command::import, true,
               [](CLI::App& app, Request& request) {
                   describeJobs(app, request.jobs);
                   describeImport(app, request.import);
               }},
    CommandRow{"info", "Print the version, contents and damages of model files, without importing them", Command::info,
               true, [](CLI::App& app, Request& request) { describeInfo(app, request.info); }},
    CommandRow{"units", "Print the controlled units of model files and where each was found", Command::units, true,
               [](CLI::App& app, Request& request) { describeUnits(app, request.units); }},
    CommandRow{"report", "Work with the reports of imports", Command::mergeReports, false,
               [](CLI::App& app, Request& request) {
                   app.require_subcommand(1);
                   describeMerge(*app.add_subcommand("merge", "Merge several reports into one"), request.merge);
               }},
    CommandRow{"formats", "Print the output formats, or the options of one", Command::formats, false,
               [](CLI::App& app, Request& request) { describeFormats(app, request.formats); }},
    CommandRow{"schema", "Print the JSON Schema of a JSON form that petal writes", Command::schema, false,
               [](CLI::App& app, Request& request) { describeSchema(app, request.schema); }},
    CommandRow{"draw", "Draw the diagrams of model files, without importing them", Command::draw, true,
               [](CLI::App& app, Request& request) { describeDraw(app, request.draw); }},
    CommandRow{"catalog", "Put many models into a database, to be asked with SQL, or ask one", Command::catalog, true,
               [](CLI::App& app, Request& request) { describeCatalog(app, request.catalog); }},
    CommandRow{"diff", "Print what has changed between two models", Command::diff, true,
               [](CLI::App& app, Request& request) { describeDiff(app, request.diff); }},
    CommandRow{"textconv", "Print the outline of a model file for git's textconv", Command::textconv, true,
               [](CLI::App& app, Request& request) { describeTextconv(app, request.textconv); }},
    CommandRow{"options", "Print the bridge's options, their values and defaults", Command::options, false, nullptr},
    CommandRow{"spec", "Print the bridge's description of itself", Command::specification, false, nullptr},
};

std::vector<const CommandRow*> allCommands() {
    std::vector<const CommandRow*> rows(commandRows.size());
    std::ranges::transform(commandRows, rows.begin(), [](const CommandRow& row) { return &row; });
    return rows;
}

/// The commands that the parser has to know for these arguments: those that they name, as describing all takes as long
/// as the rest of a small import. All of them for a help text, and to tell that none is named.
std::vector<const CommandRow*> commandsFor(const std::vector<std::string>& arguments) {
    const auto has = [&](std::string_view word) { return std::ranges::find(arguments, word) != arguments.end(); };
    std::vector<const CommandRow*> rows;
    for (const CommandRow& row : commandRows) {
        if (has(row.name)) {
            rows.push_back(&row);
        }
    }
    return rows.empty() || has("-h") || has("--help") ? allCommands() : rows;
}

void describeCommands(CLI::App& app, Request& request, bool& versionAsked,
                      const std::vector<const CommandRow*>& commands) {
    app.description("Imports Rose model files.")->name("petal");
    CLI::Option* version = app.add_flag("--version", versionAsked, "Print the versions of petal and of the bridge");
    app.add_flag("--json", request.isVersionJson,
                 "With --version: print a JSON object, with the versions of forms and libraries as well")
        ->needs(version);
    const std::string common = footer();
    for (const CommandRow* row : commands) {
        CLI::App* command = app.add_subcommand(std::string(row->name), std::string(row->description));
        if (row->describe != nullptr) {
            row->describe(*command, request);
        }
        if (row->hasFooter) {
            command->footer(common);
        }
    }
    app.require_subcommand(0, 1);
    app.footer(common + "\n'petal import --help' lists the options of an import.");
}

OptionText textOf(const CLI::Option& option) {
    OptionText text{.names = {},
                    .value = option.get_type_name(),
                    .isRepeated = option.get_items_expected_max() > 1,
                    .description = option.get_description()};
    std::ranges::transform(option.get_snames(), std::back_inserter(text.names),
                           [](const std::string& name) { return "-" + name; });
    std::ranges::transform(option.get_lnames(), std::back_inserter(text.names),
                           [](const std::string& name) { return "--" + name; });
    return text;
}

void addTexts(const CLI::App& app, const std::string& name, std::vector<CommandText>& texts) {
    if (app.get_subcommands({}).empty() || name.empty()) {
        CommandText text{.name = name, .description = app.get_description(), .options = {}};
        std::ranges::transform(app.get_options(), std::back_inserter(text.options),
                               [](const CLI::Option* option) { return textOf(*option); });
        texts.push_back(std::move(text));
    }
    for (const CLI::App* command : app.get_subcommands({})) {
        addTexts(*command, name.empty() ? command->get_name() : name + " " + command->get_name(), texts);
    }
}

/// The commands that a command line has named so far, each after a blank.
std::string namesOfGiven(const CLI::App& app) {
    const std::vector<CLI::App*> given = app.get_subcommands();
    return given.empty() ? std::string() : " " + given.front()->get_name() + namesOfGiven(*given.front());
}

} // namespace

std::vector<CommandText> commandTexts() {
    Request request;
    bool versionAsked = false;
    CLI::App app;
    describeCommands(app, request, versionAsked, allCommands());
    std::vector<CommandText> texts;
    addTexts(app, "", texts);
    return texts;
}

Request parseCommandLine(int argc, const char* const* argv) {
    Request request;
    bool versionAsked = false;
    CLI::App app;
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    describeCommands(app, request, versionAsked, commandsFor(arguments));
    takeMarksOff(app);

    std::ranges::transform(arguments, arguments.begin(), marked);
    std::ranges::reverse(arguments); // the parser takes them from the end
    try {
        app.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        request.helpText = app.help();
        return request;
    } catch (const CLI::ParseError& error) {
        throw Failure(Outcome::wrongUsage, error.what(), "Run 'petal" + namesOfGiven(app) + " --help'.");
    }
    const std::vector<CLI::App*> given = app.get_subcommands();
    if (versionAsked) {
        request.command = Command::version;
    } else if (!given.empty()) {
        request.command = std::ranges::find(commandRows, given.front()->get_name(), &CommandRow::name)->command;
    } else {
        throw Failure(Outcome::wrongUsage, "no command given", "Run 'petal --help' to see the commands.");
    }
    return request;
}

} // namespace petal
