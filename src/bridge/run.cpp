#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "bridge/failures.h"
#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "completion/ValidateModel.h"
#include "completion/cleanup.h"
#include "host/bridge/HOLST.h"
#include "host/bridge/generateMetadataOrigin.h"
#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/localeText.h"
#include "host/literals/HOCM.h"
#include "host/log/KelException.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "literals/QEV_RRSE.h"
#include "scanner/Scanner.h"
#include "types/setRoseTypes.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace {

/// The right to import. One import at a time has it, since the builder and the scanner have one state in the process.
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

/// The name of the file's encoding. Called before the import begins, so that a failure needs no clean-up.
KelString encodingOption(const KelOptionList& options) {
    try {
        return options.getValue(QEV_RRSE::BP_ENCODING.getName());
    } catch (const std::bad_alloc&) {
        rose::failures().unexpected.raise();
    }
}

using Header = std::array<char, 20 + 1>; // with its NUL; the text ends at a NUL in the file as well

/// Reads the header, or as much of it as the file has. Repeats interrupted reads.
Header readHeader() {
    Header header{};
    std::size_t read = 0;
    do {
        std::clearerr(rose::state.theFile);
        read += std::fread(header.data() + read, 1, header.size() - 1 - read, rose::state.theFile);
    } while (std::ferror(rose::state.theFile) != 0 && errno == EINTR);
    return header;
}

/// Opens the model file into `theFile` and reads its first 20 bytes, which must contain "(object Petal". The scan
/// continues after them. Throws `ROS_I_UNABLE_TO_OPEN_INPUT_FILE` or `ROS_I_BAD_INPUT_FILE_FORMAT`.
void openModelFile(const KelString& localPath) {
    rose::state.theFile = std::fopen(localPath.text(), "r");
    if (rose::state.theFile == nullptr) {
        QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE.throwException(localPath);
    }
    if (std::strstr(readHeader().data(), "(object Petal") == nullptr) {
        QEV_RRSE::ROS_I_BAD_INPUT_FILE_FORMAT.throwException();
    }
}

/// Adds an origin to the model, which owns it.
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

/// Converts every text of the model from the encoding of that name to UTF-8 and notes the encoding on the origin. The
/// texts stay as they are if the name is "unknown", and, with a message, if the encoding is not known or needs no
/// conversion. Texts with invalid bytes are converted and counted in a message.
void convertTexts(KelModel& model, KelMetadataOrigin& origin, const KelString& encodingName, KelLog& log) {
    if (encodingName == "unknown") {
        return;
    }
    KelEncodingConverter source(encodingName);
    KelEncodingConverter target("UTF-8");
    if (source.getHandle() == nullptr) {
        HOCM::ICU_CANNNOT_CREATE_CONVERTER.log(log, encodingName);
        return;
    }
    origin.sourceEncoding = source.getEncodingName();
    if (equivalentConverters(&source, &target)) {
        HOCM::ICU_EQUIVALENT_CONVERTERS.log(log);
        return;
    }
    int stringCount = 0;
    int errorCount = 0;
    model.transcode(&source, &target, stringCount, errorCount);
    if (errorCount > 0) {
        HOCM::ICU_CONVERSION_ERROR.log(log, std::to_string(errorCount).c_str(), std::to_string(stringCount).c_str());
    }
}

/// Fills the model. Throws on any failure.
void import(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log,
            const KelString& encodingName) {
    const KelString localPath = modelPath(options);
    openModelFile(localPath);
    model.setName(computeNameFromPath(localPath, encodingName));
    rose::RoseLexImport(rose::state.theFile);
    rose::checkToBeClasses();
    rose::ValidateModel();
    rose::clearIndexes(); // the conversion of types needs memory, and nothing needs an index any longer
    rose::setRoseTypes(&model);
    KelMetadataOrigin& origin = addOrigin(model, bridgeId, localPath);
    convertTexts(model, origin, encodingName, log);
}

/// Ends a failed import and empties the model.
void giveUp(KelModel& model) noexcept {
    try {
        rose::cleanup();
    } catch (const std::bad_alloc&) {
        // There was no memory to traverse the model, but everything else has been cleaned up.
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
    model.generalPointer = nullptr; // `cleanup` would free it as a quid
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
