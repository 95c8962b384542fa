#pragma once

#include "host/bridge/KelModelBridgeDllInterface.h"

class KelLog;
class KelModel;

/// What a bridge offers that reads a model file into the repository. KelImportBridge.h says how a host gets at one and
/// what its options and messages are called.
class KEL_API KelModelBridgeImportDllInterface : public KelModelBridgeDllInterface {
public:
    /// Performs one import: reads the model file that `options` names into `model`, and returns true. Every failure is
    /// thrown as a `KelException`, whose text is "[code] message". Time and memory grow in step with the file.
    ///
    /// **Arguments.** They stay the host's, and no other thread uses them until the call returns.
    /// - `bridgeId` is any text; the model's origin keeps it.
    /// - `model` owns nothing (`KelModel::isEmpty`). Its name becomes that of the file; other texts of its own are
    ///   taken for texts of the file. Its `generalPointer` is set to null.
    /// - `options` is what `getOptionList` lists, with the values that the user has set. An option that is missing
    ///   counts as one without a value. The list is not changed.
    /// - `log` is called on this thread, for accepted levels, in the order of events. It must not change the model.
    ///   A `KelImportObserver` of this thread hears of every step, under the same condition.
    ///
    /// **File names.** The option "File" is UTF-8 and is opened under its name in the local encoding, that of LC_CTYPE.
    /// A host calls `setlocale` first; a program that has not done so is in the locale "C". There, and for a name that
    /// the local encoding does not have, the bytes are taken as they are.
    ///
    /// **Texts of the model.** They are in the file's encoding while the import runs, in events of the log as well, and
    /// in UTF-8 afterwards; bytes that the file's encoding does not have become U+FFFD and are counted in the log. The
    /// texts stay as they are in the file, and need not be valid UTF-8, when the option "Encoding" is "unknown", is
    /// UTF-8 already, or is no encoding that ICU knows, which the log tells. `KelMetadataOrigin` is never converted.
    ///
    /// **One at a time.** Any thread may import, but one import runs in a process at a time. A call during another, be
    /// it on another thread or from its log or observer, throws `HOCM::BRIDGE_IMPORT_RUNNING`; a model that owns
    /// something makes it throw `HOCM::BRIDGE_MODEL_NOT_EMPTY`. Both are thrown before anything is read or changed, and
    /// an import that runs is not disturbed.
    ///
    /// **Failure.** After any other exception the model is empty, without a name too; whatever the import had made is
    /// released, the file is closed, and the next import is unharmed. A log or observer that throws ends the import in
    /// this way, which is how a host cancels one: a `KelException` reaches the caller as it was thrown, and any other
    /// exception as `HOCM::BRIDGE_UNEXPECTED_ERROR`, as does a lack of memory.
    ///
    /// **End of the process.** When the file cannot be read on in the middle of the scan, or the scanner's buffer
    /// cannot grow, the bridge writes a line to the standard error stream and calls `exit` with status 2. A host that
    /// must survive this imports in a child process.
    virtual bool run(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log) = 0;

protected:
    KelModelBridgeImportDllInterface() = default;
    ~KelModelBridgeImportDllInterface() = default;
};
