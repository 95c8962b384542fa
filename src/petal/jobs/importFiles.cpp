#include "export/exporters.h"
#include "host/log/Severity.h"
#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/import/PlugIn.h"
#include "petal/import/formats.h"
#include "petal/jobs/ArchiveRun.h"
#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/importOne.h"
#include "petal/jobs/plan.h"
#include "petal/output/Descriptor.h"
#include "petal/output/fileFailure.h"
#include "petal/report/Report.h"
#include "petal/report/summary.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <unistd.h>

namespace petal {

namespace {

/// The report, if one is requested. It is opened before the imports: a failure must not waste them.
class ReportOutput {
public:
    explicit ReportOutput(const std::optional<std::string>& path) : path_(path) {
        if (path_) {
            writing([&] { output_ = ModelOutput::open(path_); });
        }
    }

    void write(const std::vector<FileReport>& files) {
        if (path_) {
            writing([&] {
                writeReport(files, *output_);
                output_->commit();
            });
        }
    }

private:
    template <class Step>
    void writing(Step step) {
        try {
            step();
        } catch (const std::system_error& error) {
            throw outputFailure("the report " + outputName(path_), error);
        }
    }

    std::optional<std::string> path_;
    std::unique_ptr<ModelOutput> output_;
};

/// Whether the numbers of dropped objects and losses are printed or reported.
bool isCounted(const JobsRequest& jobs) {
    return !jobs.quiet || jobs.report;
}

/// Whether the log of several files has each event; for people, events about units are summarized instead.
bool isEachEventKept(const ImportRequest& request) {
    return request.log.value_or("-") != "-" || request.logFormat != "text";
}

/// Whether to print a line for each cause of lost units.
bool areLossesTold(const ImportRequest& request, const JobsRequest& jobs) {
    const bool isWanted = severityLevel(request.logLevel.c_str()) >= severityLevel("WARNING");
    return isWanted && !(jobs.quiet && isEachEventKept(request));
}

ImportPaths pathsOf(const ImportRequest& request) {
    const auto pathIn = [](const std::optional<std::string>& given) {
        return given && *given != "-" ? *given : std::string();
    };
    ImportPaths paths{.models = {}, .ledger = pathIn(request.ledger)};
    std::ranges::transform(request.destinations, std::back_inserter(paths.models),
                           [&](const Destination& destination) { return pathIn(destination.path); });
    for (const Destination& destination : request.destinations) {
        if (destination.beside) {
            paths.models.push_back(pathIn(destination.beside));
        }
    }
    return paths;
}

Outcome importSingle(const ImportRequest& request, const JobsRequest& jobs) {
    units::UnitLocator locator = makeUnitLocator(request.units);
    const std::array paths{pathsOf(request)};
    if (jobs.resume && isUpToDate(request.file, paths.front())) {
        return Outcome::success;
    }
    const std::array sources{Source{request.file, ""}};
    const FileUses uses = planUses(sources, paths, request, jobs);
    ReportOutput report(jobs.report);
    const bool isWatched = jobs.timeout || jobs.maxMemory || jobs.report;
    const ImportContext context{uses, locator};
    const ImportEnd end =
        isWatched && !jobs.inProcess ? importApart(request, context, limitsOf(jobs)) : importHere(request, context);
    if (end.outcome != Outcome::wrongUsage) { // such as when the report would overwrite a controlled unit
        report.write({fileReport(request.file, paths.front(), end)});
    }
    if (!end.isDone()) {
        throw Failure(end.outcome, end.text, end.advice);
    }
    return end.outcome;
}

void makeFolder(const std::string& folder) {
    try {
        std::filesystem::create_directories(folder);
        if (::access(folder.c_str(), W_OK | X_OK) != 0) {
            throwErrno();
        }
    } catch (const std::system_error& error) {
        throw outputFailure("the folder '" + folder + "'", std::system_error(error.code()));
    }
}

/// Plans the outputs of the sources and makes their folders.
std::vector<ImportPaths> planPaths(std::span<const Source> sources, const ImportRequest& request) {
    std::vector<ImportPaths> paths(sources.size());
    const auto plan = [&](const std::string& folder, std::string_view ending, auto take) {
        makeFolder(folder);
        std::vector<std::string> planned = planOutputs(sources, folder, ending);
        for (std::size_t index = 0; index < paths.size(); ++index) {
            take(paths[index], std::move(planned[index]));
        }
    };
    for (const Destination& destination : request.destinations) {
        const std::string_view ending = exporter::findExporter(destination.format)->endings.front();
        plan(*destination.path, ending,
             [](ImportPaths& one, std::string path) { one.models.push_back(std::move(path)); });
    }
    if (request.ledger) {
        if (*request.ledger == "-") {
            throw Failure(Outcome::wrongUsage, "several ledgers need a folder", "Give one with --ledger.");
        }
        plan(*request.ledger, ".ledger", [](ImportPaths& one, std::string path) { one.ledger = std::move(path); });
    }
    return paths;
}

/// The one format and folder for all models; empty if none are written.
std::vector<Destination> sharedDestination(const ImportRequest& request) {
    const exporter::Exporter& exporter = *exporter::findExporter(request.format.value_or("json"));
    std::vector<Destination> destinations{
        {.format = std::string(exporter.format),
         .path = request.outputs.empty() ? std::nullopt : std::optional(request.outputs.front())}};
    checkFormatOptions(request, destinations);
    if (exporter.shape == exporter::Shape::nothing) {
        return {};
    }
    if (request.outputs.empty() || request.outputs.front() == "-") {
        throw Failure(Outcome::wrongUsage, "several models need a folder",
                      "Give one with -o, or write no models with '--format none'.");
    }
    if (request.outputs.size() > 1) {
        throw Failure(Outcome::wrongUsage,
                      "several models are written to one folder, and -o names " +
                          std::to_string(request.outputs.size()),
                      "Run petal once for each folder.");
    }
    if (const std::optional<std::string> file = furtherFile(request, exporter)) {
        throw Failure(Outcome::wrongUsage, "-O: '" + *file + "' is one file, and there are several models",
                      "Import the model alone to have that file.");
    }
    return destinations;
}

/// The path as a part of an address in a page: with every byte escaped that may mean something there.
std::string asAddress(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string address;
    for (const char byte : path) {
        const auto code = static_cast<unsigned char>(byte);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') || byte == '/' || byte == '.' || byte == '-' || byte == '_';
        if (isPlain) {
            address += byte;
        } else {
            address.append({'%', digits[code >> 4U], digits[code & 15U]});
        }
    }
    return address;
}

/// The path of the index that a format writes for the folder of a destination; empty if it writes none.
std::string indexPath(const Destination& destination) {
    const exporter::Exporter& exporter = *exporter::findExporter(destination.format);
    return exporter.writeIndex == nullptr
               ? ""
               : (std::filesystem::path(*destination.path) / "index").string().append(exporter.endings.front());
}

/// Adds the indexes to the files that are written. Throws a `Failure` with the outcome `wrongUsage` when one would
/// overwrite an input or another output.
void planIndexes(const ImportRequest& request, std::span<const Source> sources, std::span<const ImportPaths> paths,
                 FileUses& uses) {
    for (std::size_t number = 0; number < request.destinations.size(); ++number) {
        const std::string index = indexPath(request.destinations[number]);
        for (std::size_t source = 0; source < sources.size() && !index.empty(); ++source) {
            if (paths[source].models[number] == index) {
                throw Failure(Outcome::wrongUsage,
                              "the result of '" + sources[source].path +
                                  "' and the index of the folder would both be '" + index + "'",
                              "Rename the file, or import it into another folder.");
            }
        }
        uses.writes(index);
    }
}

/// Writes the index of each folder whose format has one.
void writeIndexes(const ImportRequest& request, const std::vector<FileReport>& files) {
    for (std::size_t number = 0; number < request.destinations.size(); ++number) {
        const std::string path = indexPath(request.destinations[number]);
        if (path.empty()) {
            continue;
        }
        const std::filesystem::path folder = *request.destinations[number].path;
        std::vector<exporter::IndexedOutput> models;
        for (const FileReport& file : files) {
            const bool isThere = file.state == FileState::imported || file.state == FileState::upToDate;
            const std::string output = isThere && number < file.outputs.size() ? file.outputs[number] : "";
            models.push_back(
                {.file = file.file,
                 .output = output,
                 .link =
                     output.empty() ? "" : asAddress(std::filesystem::path(output).lexically_relative(folder).string()),
                 .state = isThere                           ? "imported"
                          : file.state == FileState::failed ? "failed"
                                                            : "not started",
                 .text = file.text});
        }
        try {
            const std::unique_ptr<ModelOutput> output = ModelOutput::open(path);
            exporter::findExporter(request.destinations[number].format)->writeIndex(models, *output);
            output->commit();
        } catch (const std::system_error& error) {
            throw outputFailure("'" + path + "'", error);
        }
    }
}

Outcome importSeveral(ImportRequest request, const JobsRequest& jobs) {
    if (jobs.inProcess) {
        throw Failure(Outcome::wrongUsage, "--in-process is for a single file", "Leave it out.");
    }
    units::UnitLocator locator = makeUnitLocator(request.units);
    const bool isAutomatic = std::erase(request.units.pathMaps, automaticPathMap) > 0;
    request.areUnitsTold = isEachEventKept(request);
    request.isSummarised = false;
    request.isCounted = isCounted(jobs);
    request.areObjectsCounted = request.isCounted;
    request.destinations = sharedDestination(request);
    Sources sources = findSources(jobs);
    if (sources.files.empty() && !jobs.inputs.empty()) {
        throw Failure(Outcome::inputNotRead, "the arguments name no model file",
                      "In a folder, model files are those whose names end in '.mdl'.");
    }
    std::vector<ImportPaths> paths = planPaths(sources.files, request);
    FileUses uses = planUses(sources.files, paths, request, jobs);
    planIndexes(request, sources.files, paths, uses);
    refuseModelFiles(uses);
    static_cast<void>(PlugIn::load()); // once; the child processes inherit it
    ReportOutput report(jobs.report);
    locator.listSearchFolders();
    units::SymbolSearch search(std::move(sources.folders), std::move(sources.besides));
    ArchiveRun run(std::move(sources.files), std::move(paths), uses, locator, request, jobs);
    if (isAutomatic && request.units.mode != "skip") {
        const std::vector<units::SymbolFolder> mapped = run.mapUnitSymbols(search);
        Console(false).write(jobs.quiet ? "" : asNotes(mappingLines(mapped)));
    }
    run.run();
    const std::vector<FileReport>& files = run.getFiles();
    report.write(files);
    writeIndexes(request, files);
    if (areLossesTold(request, jobs)) {
        const units::LostUnits& lost = run.getLostUnits();
        Console(false).write(asNotes(lossLines(lost)) + asNotes(suggestionLines(search.find(lost))));
    }
    if (!jobs.quiet) {
        Console(false).write(asNotes(run.getOmissions().lines()));
        Console(false).write(summary(files, takesColours()));
    }
    const ReportTotals totals = totalsOf(files);
    if (totals.failed > 0) {
        throw Failure(files.size() == 1 ? outcomeOf(files.front().reason) : Outcome::someFailed,
                      std::to_string(totals.failed) + " of " + std::to_string(files.size()) + " files failed", "");
    }
    const std::string_view tripped = exitStatus(Outcome::checkTripped).word;
    const bool hasTripped = std::ranges::find(files, tripped, &FileReport::reason) != files.end();
    return hasTripped ? Outcome::checkTripped : Outcome::success;
}

} // namespace

Outcome importFiles(const ImportRequest& import, const JobsRequest& jobs) {
    try {
        const bool isFolderNamed = !import.outputs.empty() && import.outputs.front().ends_with('/');
        if (!isSingleFile(jobs) || isFolderNamed) {
            return importSeveral(import, jobs);
        }
        ImportRequest request = import;
        request.file = jobs.inputs.front();
        request.destinations = destinationsOf(request);
        request.isSummarised = !jobs.quiet;
        request.isCounted = isCounted(jobs);
        request.areObjectsCounted = jobs.report.has_value();
        return importSingle(request, jobs);
    } catch (const Stopped& stopped) {
        std::signal(stopped.signal, SIG_DFL); // everything has been cleaned up
        static_cast<void>(std::raise(stopped.signal));
        return Outcome::unexpected;
    }
}

} // namespace petal
