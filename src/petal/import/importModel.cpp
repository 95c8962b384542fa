#include "petal/import/importModel.h"

#include "export/Omissions.h"
#include "export/exporters.h"
#include "host/log/KelException.h"
#include "host/log/Severity.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelTraversalOperation.h"
#include "host/options/KelOptionList.h"
#include "petal/import/ModelSource.h"
#include "petal/import/PlugIn.h"
#include "petal/import/formats.h"
#include "petal/import/importOptions.h"
#include "petal/ledger/LedgerReport.h"
#include "petal/log/LogWriter.h"
#include "petal/output/OutputFiles.h"
#include "petal/output/fileFailure.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"
#include "source/makeSourceMap.h"

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace petal {

namespace {

class Count final : public KelTraversalOperation {
public:
    void post_process(KelObject* /*object*/, void* /*userData*/) override { ++objects; }

    std::uint64_t objects = 0;
};

} // namespace

std::uint64_t countObjects(KelModel& model) {
    Count count;
    model._depthTraversal(count, nullptr);
    return count.objects;
}

namespace {

/// The model of the import. It is never deleted: the end of the process frees a big model at no cost.
KelModel& keptModel() {
    static auto* const model = new KelModel;
    return *model;
}

/// The units of a model are known only now; nothing has been opened for writing yet that would empty one.
void refuseToLoseUnits(const units::UnitTree& tree, const FileUses& uses) {
    for (const units::ResolvedFile& file : tree.files) {
        uses.refuseToLose(file.path.string());
    }
}

void import(const ImportRequest& request, KelOptionList& options, KelModelBridgeImportDllInterface& bridge,
            KelLog& log) {
    try {
        bridge.run(PlugIn::bridgeId, keptModel(), options, log);
    } catch (const KelException& failure) {
        throw Failure(Outcome::importFailed, std::string(failure.getMessage().view()), importAdvice(request.file));
    }
}

/// Takes out of the model what comes from its file's path.
void forgetPath(KelModel& model) {
    model.setName("");
    for (KelMetadataOrigin* origin : model.metadataOrigins()) {
        origin->sourcePath = "";
    }
}

/// Whether the request's format shows where the objects of the model come from.
bool needsSource(const ImportRequest& request) {
    const exporter::Exporter& exporter = *exporter::findExporter(*request.format);
    if (exporter.needsSource == nullptr || !exporter.needsSource(formatOptions(request))) {
        return false;
    }
    if (::access(request.file.c_str(), F_OK) == 0 && !std::filesystem::is_regular_file(request.file)) {
        throw Failure(Outcome::wrongUsage, "'" + request.file + "' cannot be read a second time for its places",
                      "Save it as a file first.");
    }
    return true;
}

source::SourceMap findPlaces(const ImportRequest& request, const ModelSource& source, const source::Trace& trace) {
    try {
        return source::makeSourceMap(source.getTree(), trace, keptModel());
    } catch (const std::system_error& error) {
        throw Failure(Outcome::unexpected,
                      "'" + request.file + "' cannot be read again for its places: " + error.code().message(), "");
    }
}

void writeModel(const ImportRequest& request, const source::SourceMap* places) {
    const exporter::Exporter& exporter = *exporter::findExporter(*request.format);
    if (exporter.shape == exporter::Shape::nothing) {
        return;
    }
    const exporter::OptionValues options = formatOptions(request);
    exporter::Omissions omissions;
    try {
        OutputFiles files(request.output, request.outputDescriptor);
        exporter.write(
            {.model = keptModel(), .source = places, .options = options, .folder = files, .omissions = omissions});
        files.commit();
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(request.output), error);
    }
    if (request.isSummarised && !omissions.isEmpty()) {
        const std::string line = "petal: " + *request.format + ": left out: " + omissions.summary() + "\n";
        std::fwrite(line.data(), 1, line.size(), stderr);
    }
}

void countUnits(const units::UnitTree& tree, ImportResult& result) {
    for (const units::ResolvedFile& file : tree.files) {
        for (const units::Unit& unit : file.units) {
            ++(units::isLost(unit) ? result.unitsMissing : result.unitsFound);
        }
    }
}

/// Has the path symbols mapped that the request leaves to petal.
void mapSymbols(const ImportRequest& request, units::UnitLocator& locator) {
    units::SymbolSearch search({}, {units::folderOf(request.file)});
    const std::vector<units::SymbolFolder> mapped = units::mapSymbols(locator, search, [&] {
        units::LostUnits lost;
        lost.add(units::lossesOf(readModelTree(request, locator), locator.getSymbols()));
        return lost;
    });
    if (request.isSummarised) {
        std::fputs(asNotes(mappingLines(mapped)).c_str(), stderr);
    }
}

} // namespace

ImportResult importModel(const ImportRequest& request, const ImportContext& context) {
    const PlugIn plugIn = PlugIn::load();
    KelOptionList options;
    plugIn.getBridge().getOptionList(options);
    setImportOptions(request, options);
    if (mapsAutomatically(request.units)) {
        mapSymbols(request, context.locator);
    }
    const ModelSource source(request, context.locator, context.takeTree);
    refuseToLoseUnits(source.getTree(), context.uses);
    source.setOptions(options);
    LedgerReport ledger(request);
    LogWriter writer(request.log, *findLogFormat(request.logFormat), chosenEncoding(options));
    if (!request.areUnitsTold) {
        writer.leaveOut(ModelSource::missingUnitCode);
    }
    WarningCount log(writer, severityLevel(KelString(std::string_view(request.logLevel))));
    source.reportTo(log);
    std::optional<source::Trace> trace;
    const bool isPlaced = needsSource(request);
    if (isPlaced || ledger.isWanted()) {
        trace.emplace();
    }
    import(request, options, plugIn.getBridge(), log);
    source.complete(keptModel(), options);
    if (!request.namesFile) {
        forgetPath(keptModel());
    }
    if (trace) {
        trace->locate(source.getPieces());
    }
    std::optional<source::SourceMap> places;
    if (isPlaced) {
        places = findPlaces(request, source, *trace);
    }
    writeModel(request, places ? &*places : nullptr);
    if (trace) {
        ledger.make(source, *trace, keptModel(), chosenEncoding(options));
    }
    writer.close();
    ImportResult result;
    result.outcome = ledger.check(log.getCount());
    result.dropped = ledger.getDropped();
    result.losses = ledger.getLosses();
    countUnits(source.getTree(), result);
    result.objects = countObjects(keptModel());
    result.events = writer.getCounts();
    return result;
}

} // namespace petal
