#include "petal/commands.h"

#include "export/exporters.h"
#include "host/log/KelException.h"
#include "host/log/Severity.h"
#include "host/model/KelModel.h"
#include "host/options/KelOptionList.h"
#include "petal/LogWriter.h"
#include "petal/ModelOutput.h"
#include "petal/PlugIn.h"
#include "petal/importOptions.h"
#include "petal/inputAdvice.h"
#include "petal/namedDescriptor.h"
#include "petal/outputFailure.h"
#include "petal/sameFile.h"

namespace petal {

namespace {

/// The model of the import. It is never deleted: the end of the process frees a big model at no cost.
KelModel& keptModel() {
    static auto* const model = new KelModel;
    return *model;
}

bool isPath(const std::optional<std::string>& given) {
    return given && *given != "-";
}

/// Whether a file there would be emptied or replaced, not written on where it is open already.
bool isFile(const std::optional<std::string>& given) {
    return isPath(given) && namedDescriptor(*given) < 0;
}

/// What is read or written must be different files: one would be lost.
void refuseSameFiles(const ImportRequest& request) {
    const auto refuse = [](const std::optional<std::string>& written, const std::optional<std::string>& other) {
        if (isFile(written) && isFile(other) && areSameFile(*written, *other)) {
            throw Failure(Outcome::wrongUsage, "writing '" + *written + "' would overwrite '" + *other + "'",
                          "Give -o and --log files of their own.");
        }
    };
    refuse(request.output, request.file);
    refuse(request.log, request.file);
    refuse(request.output, request.log);
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
        const auto output = ModelOutput::open(request.output);
        chosenExporter(request, *output).write(keptModel(), *output);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure(isPath(request.output) ? "'" + *request.output + "'" : "standard output", error);
    }
}

} // namespace

void importModel(const ImportRequest& request) {
    const PlugIn plugIn = PlugIn::load();
    KelOptionList options;
    plugIn.getBridge().getOptionList(options);
    setImportOptions(request, options);
    refuseSameFiles(request);
    LogWriter log(request.log, *findLogFormat(request.logFormat), chosenEncoding(options));
    log.setMaximumLevel(severityLevel(KelString(std::string_view(request.logLevel))));
    import(request, options, plugIn.getBridge(), log);
    writeModel(request);
    log.close();
}

} // namespace petal
