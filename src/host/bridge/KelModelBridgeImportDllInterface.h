#pragma once

#include "host/bridge/KelModelBridgeDllInterface.h"

class KelLog;
class KelModel;

/// The interface of a bridge that imports a model file into the repository. KelImportBridge.h has the names of the
/// bridge, its options and its messages.
class KEL_API KelModelBridgeImportDllInterface : public KelModelBridgeDllInterface {
public:
    /// Performs one import: reads the model file that `options` names into `model`, and returns true. Every failure is
    /// thrown as a `KelException`, whose text is "[code] message". Time and memory are proportional to the file.
    ///
    /// **Arguments.** The host owns them, and no other thread uses them until the call returns.
    /// - `bridgeId` is any text; the model's origin keeps it.
    /// - `model` owns nothing (`KelModel::isEmpty`). Its name becomes that of the file; its other texts are treated as
    ///   texts of the file. Its `generalPointer` is set to null.
    /// - `options` has the options that `getOptionList` lists, with the values that the user has set. A missing option
    ///   counts as one without a value. The list is not changed.
    /// - `log` is called on this thread, for accepted levels, in the order of events. It must not change the model.
    ///   A `KelImportObserver` of this thread is called for every step, under the same condition.
    ///
    /// **File names.** The option "File" is UTF-8 and is opened under its name in the local encoding, that of LC_CTYPE.
    /// A host calls `setlocale` first; a program that has not done so is in the locale "C". There, and for a name
    /// that the local encoding cannot represent, the bytes are used unchanged.
    ///
    /// **Texts of the model.** They are in the file's encoding while the import runs, in events of the log as well, and
    /// in UTF-8 afterwards; bytes that are invalid in the file's encoding become U+FFFD, and the log has the number of
    /// such texts. The texts remain unchanged, and need not be valid UTF-8, when the option "Encoding" is "unknown", is
    /// UTF-8 already, or is an encoding that ICU does not know, which is logged. `KelMetadataOrigin` is never
    /// converted.
    ///
    /// **One at a time.** Any thread may import, but one import runs in a process at a time. A call during another, on
    /// another thread or from its log or observer, throws `HOCM::BRIDGE_IMPORT_RUNNING`; a model that is not empty
    /// makes it throw `HOCM::BRIDGE_MODEL_NOT_EMPTY`. Both are thrown before anything is read or changed, and the
    /// running import continues.
    ///
    /// **Failure.** After any other exception the model is empty and has no name, all objects that the import made are
    /// deleted, the file is closed, and the next import is not affected. A host cancels an import by an exception from
    /// its log or observer: a `KelException` reaches the caller as it was thrown. Any other exception, including
    /// `std::bad_alloc` of the import itself, reaches it as `HOCM::BRIDGE_UNEXPECTED_ERROR`.
    ///
    /// **End of the process.** When reading the file fails in the middle of the scan, or the scanner's buffer cannot
    /// grow, the bridge writes a line to the standard error stream and calls `exit` with status 2. A host that must
    /// survive this imports in a child process.
    virtual bool run(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log) = 0;

protected:
    KelModelBridgeImportDllInterface() = default;
    ~KelModelBridgeImportDllInterface() = default;
};
