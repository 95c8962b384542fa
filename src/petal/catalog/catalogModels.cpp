#include "loading/part.h"
#include "petal/catalog/CatalogRun.h"
#include "petal/catalog/askCatalog.h"
#include "petal/catalog/mergeCatalogs.h"
#include "petal/catalog/openDatabase.h"
#include "petal/commands.h"
#include "petal/import/PlugIn.h"
#include "petal/jobs/UnitSurvey.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"

#include <xxhash.h>

#include <csignal>

namespace petal {

namespace {

/// The options that change what is read, as text.
std::string optionsText(const CatalogRequest& request) {
    const ImportRequest& import = request.import;
    std::string text = "source=" + request.source + " encoding=" + import.encoding;
    text += import.types ? " types=" + *import.types : "";
    text += " units=" + import.units.mode;
    for (const std::string& map : import.units.pathMaps) {
        text += " path-map=" + map;
    }
    for (const std::string& folder : import.units.folders) {
        text += " unit-dir=" + folder;
    }
    return text;
}

catalog::SourceDetail sourceDetail(const std::string& word) {
    return word == "none"  ? catalog::SourceDetail::none
           : word == "all" ? catalog::SourceDetail::all
                           : catalog::SourceDetail::objects;
}

/// Leaves the models of the part that is asked for. A path alone says to which part it belongs, so that new files leave
/// the others where they are. Folders that cannot be searched stay in all parts.
void keepPart(const CatalogRequest& request, std::vector<Source>& sources, std::vector<std::string>& paths) {
    std::vector<Source> keptSources;
    std::vector<std::string> keptPaths;
    for (std::size_t at = 0; at < sources.size(); ++at) {
        const bool isOfPart = XXH64(paths[at].data(), paths[at].size(), 0) % request.parts + 1 == request.part;
        if (isOfPart || !sources[at].unreadable.empty()) {
            keptSources.push_back(std::move(sources[at]));
            keptPaths.push_back(std::move(paths[at]));
        }
    }
    sources = std::move(keptSources);
    paths = std::move(keptPaths);
}

std::string summaryLine(const CatalogCounts& counts) {
    std::string line = "petal: " + counted(counts.models, "model") + ": " + std::to_string(counts.read) + " read, " +
                       std::to_string(counts.unchanged) + " unchanged, " + std::to_string(counts.failed) + " failed";
    return line + (counts.dropped > 0 ? "; dropped as gone: " + std::to_string(counts.dropped) : "") + "\n";
}

Outcome makeCatalog(CatalogRequest request) {
    if (!request.output || *request.output == "-" || request.output->empty()) {
        throw Failure(Outcome::wrongUsage, "a catalogue needs a file or a database", "Give one with -o.");
    }
    units::UnitLocator locator = makeUnitLocator(request.import.units);
    const CatalogReading reading{sourceDetail(request.source), loading::version, optionsText(request)};
    const bool isAutomatic = std::erase(request.import.units.pathMaps, automaticPathMap) > 0;
    request.import.logLevel = "FATAL"; // the table of losses tells the rest
    request.import.isSummarised = false;
    request.import.isCounted = false;
    Sources sources = findSources(request.jobs);
    if (sources.files.empty() && sources.folders.empty()) {
        throw Failure(Outcome::inputNotRead, "the arguments name no model file", "");
    }
    std::vector<std::string> inputs = request.jobs.inputs;
    for (const std::filesystem::path& folder : sources.folders) {
        inputs.push_back(folder.string());
    }
    std::vector<std::string> paths = catalogPaths(sources.files, inputs);
    if (request.parts > 1) {
        keepPart(request, sources.files, paths);
    }
    FileUses uses;
    for (const Source& source : sources.files) {
        uses.reads(source.path);
    }
    if (!isServer(*request.output)) {
        uses.writes(*request.output);
    }
    static_cast<void>(PlugIn::load()); // once; the child processes inherit it
    const StopSignals signals;
    const std::unique_ptr<catalog::Database> database = openDatabase(*request.output, catalog::Access::write);
    locator.listSearchFolders();
    if (isAutomatic && request.import.units.mode != "skip") {
        units::SymbolSearch search(sources.folders, sources.besides);
        UnitSurvey survey(sources.files, request.import, uses, locator, request.jobs, signals);
        const auto mapped = units::mapSymbols(locator, search, [&] { return survey.survey(); });
        Console(false).write(request.jobs.quiet ? "" : asNotes(mappingLines(mapped)));
    }
    const CatalogCounts counts = withDatabase(Outcome::outputFailed, [&] {
        return CatalogRun(sources.files, paths, *database, request, reading, uses, locator).run(signals);
    });
    if (!request.jobs.quiet) {
        Console(false).write(summaryLine(counts));
    }
    if (counts.failed > 0) {
        throw Failure(Outcome::someFailed,
                      std::to_string(counts.failed) + " of " + counted(counts.models, "model") + " failed",
                      "'petal catalog --ask failed-models " + *request.output + "' lists them.");
    }
    return Outcome::success;
}

} // namespace

Outcome catalogModels(const CatalogRequest& request) {
    if (request.question) {
        askCatalog(request);
        return Outcome::success;
    }
    if (request.isMerge) {
        return mergeCatalogs(request);
    }
    try {
        return makeCatalog(request);
    } catch (const Stopped& stopped) {
        std::signal(stopped.signal, SIG_DFL); // everything has been cleaned up
        static_cast<void>(std::raise(stopped.signal));
        return Outcome::unexpected;
    }
}

} // namespace petal
