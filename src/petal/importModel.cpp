#include "petal/importModel.h"

#include "export/exporters.h"
#include "host/log/KelException.h"
#include "host/log/Severity.h"
#include "host/model/KelModel.h"
#include "host/options/KelOptionList.h"
#include "petal/LogWriter.h"
#include "petal/ModelOutput.h"
#include "petal/PlugIn.h"
#include "petal/WarningCount.h"
#include "petal/countObjects.h"
#include "petal/importOptions.h"
#include "petal/inputAdvice.h"
#include "petal/ledger/LedgerReport.h"
#include "petal/outputFailure.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"

#include <cstdio>

namespace petal {

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
        throw Failure(Outcome::importFailed, std::string(failure.getMessage().view()), inputAdvice(request.file));
    }
}

const exporter::Exporter& chosenExporter(const ImportRequest& request, const ModelOutput& output) {
    return *exporter::findExporter(request.format.value_or(output.isTerminal() ? "tree" : "json"));
}

void writeModel(const ImportRequest& request) {
    if (request.format && exporter::findExporter(*request.format)->write == nullptr) {
        return;
    }
    try {
        const auto output = ModelOutput::open(request.output, request.outputDescriptor);
        chosenExporter(request, *output).write(keptModel(), *output);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(request.output), error);
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
    if (ledger.isWanted()) {
        trace.emplace();
    }
    import(request, options, plugIn.getBridge(), log);
    source.complete(keptModel(), options);
    writeModel(request);
    if (trace) {
        trace->locate(source.getPieces());
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
