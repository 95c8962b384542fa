#include "bridge/EncodingConversion.h"
#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "bridge/ModelFile.h"
#include "bridge/failures.h"
#include "builder/BuilderState.h"
#include "builder/ImportWatch.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "completion/ValidateModel.h"
#include "completion/checkToBeClasses.h"
#include "completion/cleanup.h"
#include "host/bridge/HOLST.h"
#include "host/bridge/generateMetadataOrigin.h"
#include "host/encoding/localeText.h"
#include "host/log/KelException.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "literals/QEV_RRSE.h"
#include "scanner/RoseLexImport.h"
#include "types/setRoseTypes.h"

#include <atomic>
#include <memory>
#include <new>

namespace {

/// The right to import. One import at a time has it, since what the builder and the scanner work on is the process's.
class ImportRight {
public:
    ImportRight() {
        if (taken.exchange(true)) {
            rose::failures().importRunning.raise();
        }
    }
    ImportRight(const ImportRight&) = delete;
    ImportRight& operator=(const ImportRight&) = delete;
    ~ImportRight() { taken = false; }

private:
    static inline std::atomic<bool> taken = false;
};

/// The path of the model file in the local encoding; empty when the options do not give one.
KelString modelPath(const KelOptionList& options) {
    const void* found = options.getOptions().findFirst(&QEV_RRSE::BP_FILE.getName(), nullptr);
    return found != nullptr ? utf8ToLocale(static_cast<const KelOption*>(found)->getValue().text()) : KelString();
}

/// The name of the file's encoding. Looked up before there is anything to give up.
KelString encodingOption(const KelOptionList& options) {
    try {
        return options.getValue(QEV_RRSE::BP_ENCODING.getName());
    } catch (const std::bad_alloc&) {
        rose::failures().unexpected.raise();
    }
}

/// Notes on the model where it comes from. The model owns the origin.
KelMetadataOrigin& addOrigin(KelModel& model, const KelString& bridgeId, const KelString& path) {
    std::unique_ptr<KelMetadataOrigin> made(
        generateMetadataOrigin(HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT, bridgeId));
    KelMetadataOrigin* origin =
        rose::attach(std::move(made), [&](KelMetadataOrigin* added) { return model.addMetadataOrigin(added); });
    rose::trace::repaired(model, KelImportReason::none, origin);
    origin->sourceFormat = "MDL";
    origin->sourceKind = "OBJ";
    origin->sourcePath = path;
    return *origin;
}

/// Fills the model; whatever fails leaves as an exception.
void import(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log,
            const KelString& encodingName) {
    const KelString localPath = modelPath(options);
    rose::openModelFile(localPath);
    model.setName(computeNameFromPath(localPath, encodingName));
    rose::RoseLexImport(rose::state.theFile);
    rose::checkToBeClasses();
    rose::ValidateModel();
    rose::setRoseTypes(&model);
    KelMetadataOrigin& origin = addOrigin(model, bridgeId, localPath);
    rose::convertTexts(model, origin, encodingName, log);
}

/// Ends an import that has failed: nothing is left of it.
void giveUp(KelModel& model) noexcept {
    try {
        rose::cleanup();
    } catch (const std::bad_alloc&) {
        // There was no memory to walk the model, but all else has been cleaned up.
    }
    model.recursiveDelete();
}

} // namespace

bool KelIbmRationalRose40ImportDllInterface::run(const KelString& bridgeId, KelModel& model, KelOptionList& options,
                                                 KelLog& log) {
    const ImportRight right; // first: another import may be filling this very model
    if (!model.isEmpty()) {
        rose::failures().modelNotEmpty.raise();
    }
    model.generalPointer = nullptr; // one that is set would be freed as a quid at the end
    const KelString encodingName = encodingOption(options);
    rose::startBuilding(model, log, &options);
    const rose::ImportWatch watch;
    const rose::trace::Scope trace(KelImportObserver::current());
    try {
        import(bridgeId, model, options, log, encodingName);
    } catch (const KelException&) {
        giveUp(model);
        throw;
    } catch (...) {
        giveUp(model);
        rose::failures().unexpected.raise();
    }
    try {
        rose::cleanup();
    } catch (const std::bad_alloc&) { // the model is empty
        rose::failures().unexpected.raise();
    }
    return true;
}
